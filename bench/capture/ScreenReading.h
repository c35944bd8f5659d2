#pragma once

#include <QSize>

namespace Platform {
class X11DisplayServer;
}

namespace Lumenote::Bench {

/// Prints what it costs to capture the whole screen, without and with a window of this program on
/// it, beside XShmGetImage of the same rectangle. Needs a QGuiApplication on that screen.
void measureScreenReading(
    Platform::X11DisplayServer& server, QSize screenSize, qint64 serverProcessID);

} // namespace Lumenote::Bench
