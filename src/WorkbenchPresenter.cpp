#include "WorkbenchPresenter.h"

#include "Capture/ScreenGeometry.h"
#include "Platform/ApplicationActivation.h"
#include "Platform/Tasks.h"

#include <QAction>
#include <QApplication>
#include <QPointer>
#include <QTimer>
#include <QWindow>

#include <algorithm>
#include <chrono>

namespace Lumenote {

namespace {

constexpr int focusAttempts = 10;
constexpr std::chrono::milliseconds focusInterval(100);

/// The display under the pointer, or else the first.
std::optional<Platform::Screen> screenInUse(const Platform::DisplayServer& displayServer)
{
    const auto screens = displayServer.screens();
    if (screens.isEmpty())
        return std::nullopt;
    return ScreenGeometry::screenUnderPointer(screens, displayServer.pointerPosition())
        .value_or(screens.constFirst());
}

} // namespace

WorkbenchPresenter::WorkbenchPresenter(const WorkbenchWindowController::Services& services)
    : m_services(services)
{
}

WorkbenchPresenter::~WorkbenchPresenter() = default;

void WorkbenchPresenter::present(const std::shared_ptr<WorkbenchModel>& model)
{
    dismissAll();
    auto& controller = *m_workbenches.emplace_back(std::make_unique<WorkbenchWindowController>(
        model, m_services, [this](const QUuid& id) { restoreCapture(id); },
        screenInUse(m_services.desktop.displayServer)));
    controller.isModelShownElsewhere = [this, &controller] { return isShownElsewhere(controller); };
    controller.onClose = [this, &controller] { forget(controller); };
    addEditCommands(controller.window());
    controller.showWindow();
    focusWorkbench(controller, focusAttempts);
}

void WorkbenchPresenter::restoreCapture(const QUuid& id)
{
    Platform::whenFinished(
        m_services.history.select(id), this, [this](const CaptureHistory::Selection& selection) {
            if (selection.model)
                show(selection.model);
        });
}

/// In the window that has it, or else in a new one.
void WorkbenchPresenter::show(const std::shared_ptr<WorkbenchModel>& model)
{
    if (model->recognitionInterrupted())
        model->startRecognition();
    const auto shown = std::find_if(
        m_workbenches.cbegin(), m_workbenches.cend(), [&model](const auto& controller) {
            return controller->model() == model && !controller->isDismissing();
        });
    if (shown == m_workbenches.cend())
        present(model);
    else
        focusWorkbench(**shown, focusAttempts);
}

void WorkbenchPresenter::dismissAll()
{
    std::vector<WorkbenchWindowController*> open; // The list changes with each that closes.
    for (const auto& controller : m_workbenches)
        open.push_back(controller.get());
    for (auto* const controller : open)
        controller->dismiss();
}

bool WorkbenchPresenter::isShownElsewhere(const WorkbenchWindowController& controller) const
{
    return std::any_of(m_workbenches.cbegin(), m_workbenches.cend(), [&](const auto& other) {
        return other.get() != &controller && other->model() == controller.model();
    });
}

/// The controller is on its way out of a call, so it goes later.
void WorkbenchPresenter::forget(const WorkbenchWindowController& controller)
{
    const auto found = std::find_if(m_workbenches.begin(), m_workbenches.end(),
        [&controller](const auto& other) { return other.get() == &controller; });
    if (found == m_workbenches.end())
        return;
    found->release()->deleteLater();
    m_workbenches.erase(found);
    if (m_workbenches.empty())
        m_services.desktop.activation.giveBack();
}

/// Asks for the keyboard until the window has it. A program whose window wasn't in use may have to
/// ask more than once, and what Qt believes isn't always so.
void WorkbenchPresenter::focusWorkbench(WorkbenchWindowController& controller, int attempts)
{
    if (controller.isDismissing())
        return;
    auto& window = controller.window();
    window.bringUp();
    if (attempts < 1)
        return;
    QTimer::singleShot(focusInterval, &controller, [this, &controller, attempts] {
        auto& activation = m_services.desktop.activation;
        auto* const handle = controller.window().windowHandle();
        if (controller.isDismissing() || handle == nullptr)
            return;
        Platform::whenFinished(
            activation.isKey(*handle), &controller, [this, &controller, attempts](bool isKey) {
                if (isKey || controller.isDismissing())
                    return;
                m_services.desktop.activation.activate(*controller.window().windowHandle());
                focusWorkbench(controller, attempts - 1);
            });
    });
}

WorkbenchWindowController* WorkbenchPresenter::keyWorkbench() const
{
    for (const auto& controller : m_workbenches)
        if (controller->window().isActiveWindow())
            return controller.get();
    const bool isAlone = m_workbenches.size() == 1 && QApplication::activeWindow() == nullptr;
    return isAlone ? m_workbenches.front().get() : nullptr;
}

void WorkbenchPresenter::addEditCommands(QWidget& window) const
{
    struct Command {
        const char* name;
        QList<QKeySequence> keys;
        void (WorkbenchPresenter::*run)() const;
    };
    const QList<Command> commands{
        {"closeWindow", {Qt::CTRL | Qt::Key_W}, &WorkbenchPresenter::closeWindow},
        {"undo", {Qt::CTRL | Qt::Key_Z}, &WorkbenchPresenter::undoEdit},
        {"redo", {Qt::CTRL | Qt::SHIFT | Qt::Key_Z, Qt::CTRL | Qt::Key_Y},
            &WorkbenchPresenter::redoEdit},
        {"copyRecognizedText", {Qt::CTRL | Qt::Key_C}, &WorkbenchPresenter::copyText},
    };
    for (const auto& command : commands) {
        auto* const action = new QAction(&window);
        action->setObjectName(QString::fromLatin1(command.name));
        action->setShortcuts(command.keys);
        connect(action, &QAction::triggered, this, command.run);
        window.addAction(action);
    }
}

void WorkbenchPresenter::closeWindow() const
{
    if (auto* const workbench = keyWorkbench())
        workbench->dismiss();
    else if (auto* const window = QApplication::activeWindow())
        window->close();
}

// A field or text with the keyboard takes these keys itself where it can do something with them.

void WorkbenchPresenter::undoEdit() const
{
    if (const auto* const workbench = keyWorkbench(); workbench && workbench->model())
        workbench->model()->undo();
}

void WorkbenchPresenter::redoEdit() const
{
    if (const auto* const workbench = keyWorkbench(); workbench && workbench->model())
        workbench->model()->redo();
}

void WorkbenchPresenter::copyText() const
{
    if (auto* const workbench = keyWorkbench())
        workbench->copyRecognizedText();
}

} // namespace Lumenote
