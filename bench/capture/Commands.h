#pragma once

namespace Lumenote::Bench {

/// Prints what whole commands cost that look at the screen.
void measureCommands();

} // namespace Lumenote::Bench
