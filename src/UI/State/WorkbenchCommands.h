#pragma once

class QWidget;

namespace Lumenote {

class WorkbenchState;

/// Gives @p window the keys that act on the capture as a whole, whether or not a control for them
/// is in sight. Those that bear on the window itself are its own.
void addWorkbenchCommands(QWidget& window, WorkbenchState& state);

} // namespace Lumenote
