// What capturing costs: reading the screen beside XShmGetImage, from the hot key to the overlay and
// from the mouse to the image, whole commands, and the program at rest. All runs of what is
// compared alternate, and medians are told. Each part runs in a process of its own on an X server
// of its own.

#include "Commands.h"
#include "Desk.h"
#include "HotKeyToDimming.h"
#include "IdleProgram.h"
#include "Platform/X11/Session.h"
#include "Platform/X11/X11DisplayServer.h"
#include "ScreenReading.h"
#include "SelectionSteps.h"
#include "Windows.h"

#include <QApplication>
#include <QScreen>

#include <cstdio>
#include <exception>

using namespace Lumenote::Bench;

namespace {

/// A part that needs what the program itself makes first.
template <typename Part>
void runOnDisplayServer(int& argc, char** argv, Part part)
{
    auto session = Platform::X11::Session::open({});
    require(session.has_value(), "no session with the X server");
    const QApplication application(argc, argv);
    Platform::X11DisplayServer server(*std::move(session));
    part(server);
}

void readScreen(Platform::X11DisplayServer& server)
{
    const auto size = QGuiApplication::primaryScreen()->size();
    const auto windows = otherWindows(size);
    measureScreenReading(server, size, Desk::serverProcessID());
}

void runAll()
{
    const IdleProgram idle; // At rest while others are measured.
    for (const auto* screen : {"1920x1080x24", "3840x2160x24"})
        Desk(screen).run("reading");
    for (const auto* part : {"steps", "dimming", "commands"})
        Desk("1920x1080x24").run(part);
    idle.report();
}

void run(int& argc, char** argv)
{
    const QByteArray part = argc > 1 ? argv[1] : "";
    if (part == "reading")
        return runOnDisplayServer(argc, argv, readScreen);
    if (part == "steps")
        return runOnDisplayServer(argc, argv, measureSelectionSteps);
    const QCoreApplication application(argc, argv);
    if (part == "dimming")
        measureHotKeyToDimming();
    else if (part == "commands")
        measureCommands();
    else
        runAll();
}

} // namespace

int main(int argc, char** argv)
{
    try {
        run(argc, argv);
        return 0;
    } catch (const std::exception& failure) {
        static_cast<void>(std::fprintf(stderr, "capture-bench: %s\n", failure.what()));
        return 1;
    }
}
