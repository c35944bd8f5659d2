#include "AppDelegate.h"
#include "CLIRunner.h"
#include "Log.h"
#include "OCR/OCRService.h"
#include "Platform/Bundle.h"
#include "Platform/Desktop/ClipboardPasteboard.h"
#include "Platform/Desktop/FileDialogSavePanel.h"
#include "Platform/Desktop/MessageBoxAlerts.h"
#include "Platform/Desktop/QtImageDrag.h"
#include "Platform/Desktop/QuitOnTermination.h"
#include "Platform/Freedesktop/FreedesktopFileSystem.h"
#include "Platform/Freedesktop/JournalLog.h"
#include "Platform/Freedesktop/PortalSettings.h"
#include "Platform/Freedesktop/UserDefaultsFile.h"
#include "Platform/StandardStreams.h"
#include "Platform/Tesseract/TesseractRecognizer.h"
#include "Platform/Threads.h"
#include "Platform/X11/DragAnswers.h"
#include "Platform/X11/EndOnServerLoss.h"
#include "Platform/X11/Session.h"
#include "Platform/X11/X11ApplicationActivation.h"
#include "Platform/X11/X11DisplayServer.h"
#include "Platform/X11/X11FloatingWindows.h"
#include "Platform/X11/X11HotKeyRegistrar.h"
#include "Platform/X11/X11KeyboardLayout.h"
#include "Platform/X11/X11OverlayKeyboard.h"
#include "UI/Shared/Motion.h"
#include "UI/Shared/Theme.h"

#include <QApplication>
#include <QByteArrayList>
#include <QStandardPaths>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <memory>

namespace {

using namespace Lumenote;

/// Far more than it takes to leave a server that answers.
constexpr std::chrono::seconds partingTime(2);

void openLog()
{
    const auto bundle = Platform::mainBundle();
    Log::setSystemLog(std::make_shared<Platform::JournalLog>(),
        bundle ? bundle->identifier : QStringLiteral("Lumenote"));
}

std::unique_ptr<OCRService> makeOCRService()
{
    return std::make_unique<OCRService>(std::make_shared<Platform::TesseractRecognizer>());
}

/// Qt must show itself where the screen is captured, whatever else there is.
void stayOnX11()
{
    qputenv("QT_QPA_PLATFORM", "xcb");
}

[[noreturn]] void selfTest(int& argc, char** argv)
{
    openLog();
    auto session = Platform::X11::Session::open({});
    if (!session)
        CLIRunner::selfTest(session.error());
    stayOnX11();
    const QGuiApplication application(argc, argv);
    Platform::X11DisplayServer displayServer(*std::move(session));
    CLIRunner::selfTest(displayServer);
}

/// Files that other programs read, and that nobody misses.
std::filesystem::path dragFolder()
{
    const auto cache = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    return std::filesystem::path(cache.toStdString()) / "Lumenote" / "Drags";
}

/// The colour and the motion of the workbench are the user's choice for all programs.
void followDesktop(const Platform::DesktopSettings& settings)
{
    const auto take = [&settings] {
        Theme::setAccent(settings.accentColor());
        Motion::setEnabled(settings.animationsEnabled());
    };
    take();
    QObject::connect(&settings, &Platform::DesktopSettings::changed, take);
}

int runDesktopProgram(int& argc, char** argv)
{
    openLog();
    auto session = Platform::X11::Session::open({});
    if (!session)
        CLIRunner::noDisplayServer(session.error());
    stayOnX11();
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const Platform::QuitOnTermination quitOnTermination;

    const Platform::PortalSettings settings;
    followDesktop(settings);

    const auto bundle = Platform::mainBundle();
    const auto files = std::make_shared<Platform::FreedesktopFileSystem>();
    const auto ocr = makeOCRService();
    Platform::MessageBoxAlerts alerts;
    Platform::X11DisplayServer displayServer(*std::move(session));
    Platform::X11HotKeyRegistrar hotKeyRegistrar;
    Platform::X11KeyboardLayout keyboardLayout;
    Platform::X11OverlayKeyboard overlayKeyboard;
    Platform::ClipboardPasteboard pasteboard;
    Platform::FileDialogSavePanel savePanel;
    Platform::X11ApplicationActivation activation;
    Platform::X11FloatingWindows floatingWindows;
    Platform::QtImageDrag imageDrag(
        Platform::DraggedFiles(files, dragFolder()), Platform::DragAnswers::largestAnswer());
    const Platform::DragAnswers dragAnswers([&imageDrag] { return imageDrag.offered(); });
    int exitCode = 0;
    {
        Platform::UserDefaultsFile userDefaults(Platform::UserDefaultsFile::standardPath(bundle));
        AppDelegate delegate(CaptureStore(CaptureStore::applicationSupport(*files, bundle), files),
            {.ocr = *ocr,
                .alerts = alerts,
                .activation = activation,
                .displayServer = displayServer,
                .floatingWindows = floatingWindows,
                .hotKeyRegistrar = hotKeyRegistrar,
                .imageDrag = imageDrag,
                .keyboardLayout = keyboardLayout,
                .overlayKeyboard = overlayKeyboard,
                .pasteboard = pasteboard,
                .savePanel = savePanel,
                .userDefaults = userDefaults});
        const Platform::EndOnServerLoss endOnServerLoss([&delegate] {
            delegate.finishWriting();
            CLIRunner::noDisplayServer({.message = QStringLiteral("the X server is gone")});
        });
        delegate.finishLaunching();
        exitCode = QApplication::exec();
    }
    // All that must be on disk is there. The rest waits for the server, which may hang.
    Platform::endWithin(partingTime, exitCode);
    return exitCode;
}

} // namespace

int main(int argc, char** argv)
{
    Platform::guardStandardStreams();

    // The first mode named wins, in this order; a path behind --ocr may be any text, another mode's
    // name included.
    const QByteArrayList arguments(argv, argv + argc);
    if (const auto ocr = arguments.indexOf("--ocr"); ocr >= 0) {
        if (ocr + 1 == arguments.size())
            CLIRunner::usage();
        openLog();
        CLIRunner::run(arguments.at(ocr + 1).toStdString(), *makeOCRService());
    }
    if (arguments.contains("--self-test"))
        selfTest(argc, argv);
    if (arguments.contains("--version"))
        CLIRunner::version();
    if (arguments.contains("--warm-up")) {
        openLog();
        CLIRunner::warmUp(*makeOCRService());
    }
    const int exitCode = runDesktopProgram(argc, argv);
    // Without the rest of the clean-up: threads left behind may still recognise, and must not meet
    // destroyed statics.
    std::_Exit(exitCode);
}
