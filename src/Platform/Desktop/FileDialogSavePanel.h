#pragma once

#include "Platform/SavePanel.h"

#include <QCoreApplication>
#include <QPointer>

#include <memory>

class QFileDialog;

namespace Platform {

/// The save panel as a file dialog, the desktop's own where it has one, which needs a QApplication.
/// It stays above the window that is active when it opens, but takes nothing of its looks and
/// outlives it. Starts in the folder used last, at first in that of pictures.
class FileDialogSavePanel final : public SavePanel {
    Q_DECLARE_TR_FUNCTIONS(FileDialogSavePanel)
public:
    FileDialogSavePanel();
    ~FileDialogSavePanel() override;
    FileDialogSavePanel(const FileDialogSavePanel&) = delete;
    FileDialogSavePanel& operator=(const FileDialogSavePanel&) = delete;

    /// While a panel is open, brings that to the front; what the user picks is then for the last
    /// who asked, and who asked before is told that there is nothing. A panel that goes, however
    /// that comes, has answered.
    void ask(const QString& suggestedName, Answer answer) override;

private:
    class Question;

    void open(const QString& file, const std::shared_ptr<Question>& question);
    void take(const QString& file, const std::shared_ptr<Question>& question);

    QString m_folder;
    QPointer<QFileDialog> m_dialog; ///< The open one.
    std::shared_ptr<Question> m_question; ///< That of the open one.
};

} // namespace Platform
