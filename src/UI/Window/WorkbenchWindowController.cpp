#include "UI/Window/WorkbenchWindowController.h"

#include "Capture/ScreenGeometry.h"
#include "Platform/ApplicationActivation.h"
#include "UI/State/WorkbenchCommands.h"
#include "UI/Window/WindowPlacement.h"
#include "UI/Workbench/FailureView.h"
#include "UI/Workbench/WorkbenchView.h"

#include <QGuiApplication>
#include <QScreen>

#include <utility>

namespace Lumenote {

namespace {

/// The visible frames of @p screens in Qt's global points.
QList<QRectF> visibleFrames(const QList<Platform::Screen>& screens)
{
    QList<QRectF> frames;
    for (const auto& screen : screens)
        frames.append(ScreenGeometry::inQt(screen.visibleFrame, screens));
    return frames;
}

} // namespace

WorkbenchWindowController::WorkbenchWindowController(std::shared_ptr<WorkbenchModel> model,
    const Services& services, const Restore& restore, const std::optional<Platform::Screen>& screen)
    : m_model(std::move(model))
    , m_displayServer(services.desktop.displayServer)
    , m_window(std::make_unique<WorkbenchWindow>(services.desktop))
{
    place(screen);
    buildContent(services, restore);
    connect(m_window.get(), &WorkbenchWindow::cancelled, this, &WorkbenchWindowController::dismiss);
    connect(&m_displayServer, &Platform::DisplayServer::screensChanged, this,
        &WorkbenchWindowController::stayReachable);
}

WorkbenchWindowController::~WorkbenchWindowController() = default;

void WorkbenchWindowController::buildContent(const Services& services, const Restore& restore)
{
    if (!m_model) {
        m_window->setContent(new FailureView(m_window.get()));
        return;
    }
    auto* const view =
        new WorkbenchView(*m_model, services.history, services.imageDrag, m_window.get());
    connect(view, &WorkbenchView::dismissRequested, this, &WorkbenchWindowController::dismiss);
    connect(view, &WorkbenchView::restoreRequested, this, restore);
    addWorkbenchCommands(*m_window, view->state());
    view->prepare(m_window->size(), m_window->devicePixelRatioF());
    m_window->setContent(view);
}

void WorkbenchWindowController::place(const std::optional<Platform::Screen>& screen)
{
    std::optional<QRectF> visible;
    if (screen)
        visible = ScreenGeometry::inQt(screen->visibleFrame, m_displayServer.screens());
    const auto size =
        WindowPlacement::popupSize(m_model ? m_model->pointSize() : QSizeF(), visible);
    const QRectF around = visible.value_or(QRectF(QPointF(), QSizeF(size)));
    const QRect frame(WindowPlacement::position(size, around), size);
    if (auto* const display = QGuiApplication::screenAt(frame.center()))
        m_window->setScreen(display); // Whose scale it has before it is shown.
    m_window->setCardFrame(frame);
}

/// A window whose display has gone comes to one that is there.
void WorkbenchWindowController::stayReachable()
{
    const auto frames = visibleFrames(m_displayServer.screens());
    const auto frame = m_window->cardFrame();
    if (!frames.isEmpty() && !WindowPlacement::isReachable(frame, frames))
        m_window->setCardFrame(
            {WindowPlacement::position(frame.size(), frames.constFirst()), frame.size()});
}

void WorkbenchWindowController::showWindow()
{
    m_window->bringUp();
}

void WorkbenchWindowController::dismiss()
{
    if (std::exchange(m_isDismissing, true))
        return;
    m_window->fadeOut([this] { close(); });
}

void WorkbenchWindowController::close()
{
    m_window->hide();
    if (m_model && !(isModelShownElsewhere && isModelShownElsewhere()))
        m_model->cancelRecognition();
    if (onClose)
        onClose();
}

bool WorkbenchWindowController::copyRecognizedText()
{
    return m_model && m_model->copyRecognizedText();
}

} // namespace Lumenote
