#pragma once

#include "Model/CaptureHistory.h"
#include "Platform/DisplayServer.h"
#include "UI/Window/WorkbenchWindow.h"

#include <QObject>
#include <QUuid>

#include <functional>
#include <memory>
#include <optional>

namespace Platform {
class ImageDrag;
}

namespace Lumenote {

class WorkbenchState;

/// One open workbench: the window, and the document that it shows for all of its life. Main thread.
class WorkbenchWindowController : public QObject {
    Q_OBJECT

public:
    struct Services {
        WorkbenchWindow::Desktop desktop;
        CaptureHistory& history;
        Platform::ImageDrag& imageDrag;
    };
    using Restore = std::function<void(const QUuid&)>;

    /// On @p screen, where that is known. Without a @p model the window says that there is no
    /// image.
    WorkbenchWindowController(std::shared_ptr<WorkbenchModel> model, const Services& services,
        const Restore& restore, const std::optional<Platform::Screen>& screen);
    ~WorkbenchWindowController() override;

    /// Called last when the window has closed.
    std::function<void()> onClose;
    /// Whether another open workbench shows the same model, so that its recognition goes on.
    std::function<bool()> isModelShownElsewhere;

    const std::shared_ptr<WorkbenchModel>& model() const { return m_model; }
    WorkbenchWindow& window() const { return *m_window; }
    bool isDismissing() const { return m_isDismissing; } ///< From the start of the fade on.

    void showWindow();
    /// Closes the window after a fade. Once is enough.
    void dismiss();

    /// Whether there was text to copy, and it was taken.
    bool copyRecognizedText();

private:
    void buildContent(const Services& services, const Restore& restore);
    void place(const std::optional<Platform::Screen>& screen);
    void stayReachable();
    void close();

    const std::shared_ptr<WorkbenchModel> m_model;
    Platform::DisplayServer& m_displayServer;
    std::unique_ptr<WorkbenchWindow> m_window;
    bool m_isDismissing = false;
};

} // namespace Lumenote
