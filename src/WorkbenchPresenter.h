#pragma once

#include "Platform/DisplayServer.h"
#include "UI/Window/WorkbenchWindowController.h"

#include <QObject>
#include <QUuid>

#include <memory>
#include <vector>

namespace Lumenote {

/// Opens workbenches, finds the one in use, and carries out what is meant for that one. Main
/// thread.
class WorkbenchPresenter : public QObject {
    Q_OBJECT

public:
    /// All of which outlives the presenter.
    explicit WorkbenchPresenter(const WorkbenchWindowController::Services& services);
    ~WorkbenchPresenter() override;

    /// Shows @p model, or that there is none, on the display under the pointer. Whatever workbench
    /// is open goes.
    void present(const std::shared_ptr<WorkbenchModel>& model);

    /// Brings a capture of the history back, in the window that shows it where there is one.
    void restoreCapture(const QUuid& id);

    void dismissAll();

    /// Those on screen, oldest first, fading ones included.
    const std::vector<std::unique_ptr<WorkbenchWindowController>>& workbenches() const
    {
        return m_workbenches;
    }

    /// The one that has the keyboard; where no window of the program has it, the only one there is.
    WorkbenchWindowController* keyWorkbench() const;

    // What the keys in a workbench do.
    void closeWindow() const;
    void undoEdit() const;
    void redoEdit() const;
    void copyText() const;

private:
    void addEditCommands(QWidget& window) const;
    void focusWorkbench(WorkbenchWindowController& controller, int attempts);
    bool isShownElsewhere(const WorkbenchWindowController& controller) const;
    void forget(const WorkbenchWindowController& controller);
    void show(const std::shared_ptr<WorkbenchModel>& model);

    const WorkbenchWindowController::Services m_services;
    std::vector<std::unique_ptr<WorkbenchWindowController>> m_workbenches;
};

} // namespace Lumenote
