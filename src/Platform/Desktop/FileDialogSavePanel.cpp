#include "Platform/Desktop/FileDialogSavePanel.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QStandardPaths>
#include <QWindow>

#include <utility>

namespace Platform {

namespace {

/// As a widget's child, the dialog would have its style sheet and go with it.
void putAbove(const QWidget* window, QFileDialog& dialog)
{
    dialog.winId(); // Which makes the handle.
    if (window != nullptr)
        dialog.windowHandle()->setTransientParent(window->windowHandle());
}

void bringToFront(QFileDialog& dialog)
{
    dialog.show();
    dialog.raise();
    dialog.activateWindow();
}

/// Whatever other ending the user typed.
QString asPng(const QString& file)
{
    const auto ending = QStringLiteral(".png");
    return file.endsWith(ending, Qt::CaseInsensitive) ? file : file + ending;
}

} // namespace

/// What is to be answered once.
class FileDialogSavePanel::Question {
public:
    /// Whoever asked before is answered with nothing.
    void put(Answer answer)
    {
        if (const auto former = std::exchange(m_answer, std::move(answer)))
            former(std::nullopt);
    }

    void answer(const std::optional<std::filesystem::path>& file)
    {
        if (const auto waiting = std::exchange(m_answer, nullptr))
            waiting(file);
    }

private:
    Answer m_answer; ///< Null once it is answered.
};

FileDialogSavePanel::FileDialogSavePanel()
    : m_folder(QStandardPaths::writableLocation(QStandardPaths::PicturesLocation))
{
}

FileDialogSavePanel::~FileDialogSavePanel()
{
    delete m_dialog;
}

void FileDialogSavePanel::ask(const QString& suggestedName, Answer answer)
{
    if (m_dialog) {
        bringToFront(*m_dialog);
        m_question->put(std::move(answer));
        return;
    }
    m_question = std::make_shared<Question>();
    m_question->put(std::move(answer));
    open(QDir(m_folder).filePath(suggestedName), m_question);
}

void FileDialogSavePanel::open(const QString& file, const std::shared_ptr<Question>& question)
{
    const QFileInfo suggestion(file);
    m_dialog = new QFileDialog;
    m_dialog->setAttribute(Qt::WA_DeleteOnClose);
    m_dialog->setObjectName(QStringLiteral("savePanel"));
    m_dialog->setWindowTitle(tr("Save Image"));
    m_dialog->setAccessibleName(tr("Save Image"));
    m_dialog->setWindowFlag(Qt::WindowStaysOnTopHint);
    m_dialog->setAcceptMode(QFileDialog::AcceptSave);
    m_dialog->setNameFilter(tr("PNG image (*.png)"));
    m_dialog->setDefaultSuffix(QStringLiteral("png"));
    m_dialog->setDirectory(suggestion.dir().exists() ? suggestion.path() : QDir::homePath());
    m_dialog->selectFile(suggestion.fileName());

    auto* const dialog = m_dialog.data();
    QObject::connect(dialog, &QDialog::finished, dialog, [this, dialog, question](int result) {
        QObject::disconnect(dialog, &QObject::destroyed, dialog, nullptr);
        m_dialog = nullptr;
        if (result == QDialog::Accepted)
            take(dialog->selectedFiles().value(0), question);
        else
            question->answer(std::nullopt);
    });
    QObject::connect(
        dialog, &QObject::destroyed, dialog, [question] { question->answer(std::nullopt); });
    putAbove(QApplication::activeWindow(), *dialog);
    bringToFront(*dialog);
}

void FileDialogSavePanel::take(const QString& file, const std::shared_ptr<Question>& question)
{
    m_folder = QFileInfo(file).path();
    const auto png = asPng(file);
    // Whether to replace that one the user hasn't been asked.
    if (png != file && QFileInfo::exists(png))
        open(png, question);
    else
        question->answer(std::filesystem::path(QFile::encodeName(png).toStdString()));
}

} // namespace Platform
