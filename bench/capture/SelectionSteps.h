#pragma once

namespace Platform {
class X11DisplayServer;
}

namespace Lumenote::Bench {

/// Prints, seen from inside, where the time goes from the hot key to the overlay, and from the
/// release of the mouse to the image. Without and with a compositor. Brings a window manager and
/// windows along; needs a QApplication.
void measureSelectionSteps(Platform::X11DisplayServer& server);

} // namespace Lumenote::Bench
