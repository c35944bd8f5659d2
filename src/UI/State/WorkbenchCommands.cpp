#include "UI/State/WorkbenchCommands.h"

#include "UI/State/WorkbenchState.h"

#include <QAction>
#include <QKeySequence>
#include <QWidget>

#include <functional>

namespace Lumenote {

namespace {

struct Command {
    const char* name;
    QList<QKeySequence> keys;
    std::function<bool(const WorkbenchState&)> isEnabled; ///< Always, where there is none.
    std::function<void(WorkbenchState&)> run;
};

QList<Command> commands()
{
    using State = WorkbenchState;
    const auto onCapture = [](const State& state) { return !state.showsText(); };
    return {
        {"finish", {Qt::Key_Return, Qt::Key_Enter},
            [](const State& state) { return !state.isStatusShown(); }, &State::finish},
        {"finishBySpace", {Qt::Key_Space}, onCapture, &State::finish},
        {"finishAlways", {Qt::CTRL | Qt::SHIFT | Qt::Key_C}, {}, &State::finish},
        {"copyAllText", {Qt::CTRL | Qt::ALT | Qt::Key_C},
            [](const State& state) { return !state.model().displayText().isEmpty(); },
            &State::copyText},
        {"saveImage", {Qt::CTRL | Qt::Key_S}, {}, [](State& state) { state.model().saveImage(); }},
        {"deleteAnnotation", {Qt::Key_Delete, Qt::Key_Backspace},
            [](const State& state) {
                return !state.showsText() && state.model().selectedAnnotationID().has_value();
            },
            [](State& state) { state.model().deleteSelectedAnnotation(); }},
        {"toggleText", {Qt::CTRL | Qt::Key_T},
            [](const State& state) { return state.canToggleText() && !state.isStatusShown(); },
            &State::toggleText},
    };
}

} // namespace

void addWorkbenchCommands(QWidget& window, WorkbenchState& state)
{
    for (const auto& command : commands()) {
        auto* const action = new QAction(&window);
        action->setObjectName(QString::fromLatin1(command.name));
        action->setShortcuts(command.keys);
        action->setAutoRepeat(false);
        QObject::connect(
            action, &QAction::triggered, &state, [&state, run = command.run] { run(state); });
        window.addAction(action);
        if (!command.isEnabled)
            continue;
        const auto refresh = [action, &state, isEnabled = command.isEnabled] {
            action->setEnabled(isEnabled(state));
        };
        refresh();
        QObject::connect(&state, &WorkbenchState::layoutChanged, action, refresh);
        for (const auto change : {&WorkbenchModel::textChanged, &WorkbenchModel::recognitionChanged,
                 &WorkbenchModel::selectedAnnotationIDChanged})
            QObject::connect(&state.model(), change, action, refresh);
    }
}

} // namespace Lumenote
