#include "Harness/Desktop.h"

#include "Harness/Waiting.h"
#include "Harness/XServer.h"

namespace Harness {

namespace {

/// As xrandr wants it: pixels, and millimetres at 96 of them in an inch.
QByteArray monitorGeometry(const QRect& pixels)
{
    return u"%1/%2x%3/%4+%5+%6"_qs.arg(pixels.width())
        .arg(pixels.width() * 254 / 960)
        .arg(pixels.height())
        .arg(pixels.height() * 254 / 960)
        .arg(pixels.x())
        .arg(pixels.y())
        .toLatin1();
}

void end(QProcess* process)
{
    process->terminate();
    if (!process->waitForFinished(patience))
        process->kill();
    delete process;
}

} // namespace

Desktop::Desktop(const QProcessEnvironment& environment)
    : m_environment(environment)
{
}

bool Desktop::setUpMonitors() const
{
    return run("xrandr", {"--setmonitor", "*first", monitorGeometry(firstMonitor), "screen"})
        && plugSecondMonitor();
}

bool Desktop::plugSecondMonitor() const
{
    return run("xrandr", {"--setmonitor", "second", monitorGeometry(secondMonitor), "none"});
}

bool Desktop::unplugSecondMonitor() const
{
    return run("xrandr", {"--delmonitor", "second"});
}

bool Desktop::run(const char* program, const QByteArrayList& arguments) const
{
    const auto process = start(program, arguments);
    return process->waitForFinished(patience) && process->exitStatus() == QProcess::NormalExit
        && process->exitCode() == 0;
}

QByteArray Desktop::output(const char* program, const QByteArrayList& arguments) const
{
    const auto process = start(program, arguments);
    process->waitForFinished(patience);
    return process->readAllStandardOutput();
}

Desktop::Program Desktop::start(const char* program, const QByteArrayList& arguments) const
{
    Program process(new QProcess, end);
    process->setProcessEnvironment(m_environment);
    process->start(QString::fromUtf8(program), toStrings(arguments));
    return process;
}

Desktop::Program Desktop::startWindowManager() const
{
    // A window that comes while openbox is still starting may never be managed, whatever openbox
    // has announced by then. At the end of its start it runs a command.
    run("xprop", {"-root", "-remove", "HARNESS_READY"});
    auto process = start("openbox",
        {"--sm-disable", "--startup", "xprop -root -f HARNESS_READY 32c -set HARNESS_READY 1"});
    waitFor([this, &process] {
        return output("xprop", {"-root", "HARNESS_READY"}).contains("= 1")
            || process->state() == QProcess::NotRunning;
    });
    return process;
}

Desktop::Program Desktop::startCompositor(const QByteArrayList& arguments) const
{
    return start(
        "picom", QByteArrayList{"--backend", "xrender", "--config", "/dev/null"} + arguments);
}

} // namespace Harness
