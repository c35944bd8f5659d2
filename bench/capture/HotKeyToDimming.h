#pragma once

namespace Lumenote::Bench {

/// Prints how long it takes, seen from outside, until the screen dims: from the hot key of the
/// running program, and with Flameshot in all its ways. Without and with a compositor. Brings a
/// window manager and windows along.
void measureHotKeyToDimming();

} // namespace Lumenote::Bench
