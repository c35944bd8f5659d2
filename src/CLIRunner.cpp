#include "CLIRunner.h"

#include "Capture/DisplayCapture.h"
#include "Log.h"
#include "OCR/OCRService.h"
#include "Platform/Bundle.h"
#include "Platform/DisplayServer.h"
#include "Platform/ImageDecoder.h"
#include "Platform/StandardStreams.h"

#include <QCoreApplication>
#include <QFutureWatcher>
#include <QGuiApplication>

#include <array>
#include <cstdlib>
#include <unistd.h>

namespace Lumenote::CLIRunner {

namespace {

/// Without clean-up: threads left behind may still run, and must not meet destroyed statics.
/// Nothing here writes through a buffer that would need a flush.
[[noreturn]] void end(ExitCode code)
{
    std::_Exit(code);
}

void report(const QByteArray& message)
{
    Platform::writeAll(STDERR_FILENO, "lumenote: " + message + '\n');
}

[[noreturn]] void fail(const QByteArray& message, ExitCode code)
{
    report(message);
    end(code);
}

void printLine(const QString& text)
{
    if (!Platform::writeAll(STDOUT_FILENO, text.toUtf8() + '\n'))
        fail("couldn't write the text", notWritten);
}

[[noreturn]] void print(const QString& text)
{
    printLine(text);
    end(succeeded);
}

[[noreturn]] void endDenied()
{
    printLine(QStringLiteral("screen recording: denied"));
    printLine(QStringLiteral("self-test: cannot capture without Screen Recording"));
    end(notPermitted);
}

/// Warnings of Qt and other libraries would stand among the lines of a mode; what matters of a
/// failure is told by the mode itself.
void silenceOthers()
{
    Platform::silenceLibraries();
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& message) {
        if (type == QtFatalMsg)
            report(message.toUtf8());
    });
}

void startMode()
{
    Log::setMirrorsToStandardError(true);
    silenceOthers();
}

/// The arguments that Qt sees: none, since it would take those it knows for its own.
struct Arguments {
    std::array<char, 9> name{"lumenote"};
    std::array<char*, 2> values{name.data(), nullptr};
    int count = 1;
};

/// Fonts need Qt's GUI side, but no display and nothing of the desktop's.
void stayOffScreen()
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qunsetenv("QT_QPA_PLATFORMTHEME");
    qunsetenv("QT_IM_MODULE");
}

QImage decodedImage(const std::filesystem::path& path)
{
    const auto decoded = Platform::decodeImageFile(path);
    if (decoded)
        return decoded->image;
    const auto name = QByteArray::fromStdString(path.native());
    if (decoded.error().kind == Platform::Error::Kind::unreadable)
        fail("couldn't read image at " + name, noImage);
    fail("couldn't decode image at " + name, noImage);
}

/// Runs the main loop until @p future has finished, then @p onFinished, which ends the process.
template <typename T, typename Handler>
[[noreturn]] void runLoop(const QFuture<T>& future, Handler onFinished)
{
    QFutureWatcher<T> watcher;
    QObject::connect(&watcher, &QFutureWatcherBase::finished, &watcher, onFinished);
    watcher.setFuture(future);
    QCoreApplication::exec();
    end(loopReturned);
}

} // namespace

void run(const std::filesystem::path& path, OCRService& service)
{
    startMode();
    Arguments arguments;
    const QCoreApplication application(arguments.count, arguments.values.data());
    const auto recognition = service.recognize(decodedImage(path), {});
    runLoop(recognition, [&recognition] {
        const auto result = recognition.result();
        if (result.interrupted)
            fail("recognition didn't finish", unfinished);
        print(result.text());
    });
}

void usage()
{
    Platform::writeAll(STDERR_FILENO, "usage: lumenote --ocr <image>\n");
    end(wrongUsage);
}

void selfTest(Platform::DisplayServer& server)
{
    startMode();
    if (!server.isRecordingGranted())
        endDenied();
    printLine(QStringLiteral("screen recording: granted"));
    const auto capture = DisplayCapture::capture(server, QRectF(0, 0, 64, 64));
    runLoop(capture, [&capture] {
        const auto result = capture.result();
        if (!result) {
            printLine(QStringLiteral("self-test: capture FAILED"));
            end(failed);
        }
        printLine(QStringLiteral("capture: %1x%2pt, %3x%4px")
                      .arg(static_cast<int>(result->pointSize.width()))
                      .arg(static_cast<int>(result->pointSize.height()))
                      .arg(result->image.width())
                      .arg(result->image.height()));
        print(QStringLiteral("self-test: OK"));
    });
}

void selfTest(const Platform::Error& error)
{
    startMode();
    Log::write(Log::capture, error.message);
    endDenied();
}

void version()
{
    const auto bundle = Platform::mainBundle();
    if (!bundle)
        print(QStringLiteral("Lumenote (development build — no bundle)"));
    print(QStringLiteral("Lumenote %1 (%2)").arg(bundle->shortVersion, bundle->version));
}

void warmUp(OCRService& service)
{
    startMode();
    stayOffScreen();
    Arguments arguments;
    const QGuiApplication application(arguments.count, arguments.values.data());
    service.warmUp();
    runLoop(service.runner(),
        [&service] { end(service.phase() == OCRService::Phase::ready ? succeeded : failed); });
}

void noDisplayServer(const Platform::Error& error)
{
    fail("needs a display: " + error.message.toUtf8(), noDisplay);
}

} // namespace Lumenote::CLIRunner
