// The main program of tests that show windows: it starts an X server with two displays, the first
// of them to the right of and below the corner of the screen, and runs itself again on it. Qt can't
// change its connection, and ends the program when it breaks.

#include "Harness/Desktop.h"
#include "Harness/Surroundings.h"
#include "Harness/XServer.h"

#include <QApplication>
#include <QCoreApplication>
#include <QProcess>
#include <QStringList>

#include <cstdio>
#include <gtest/gtest.h>

namespace {

constexpr const char* insideMark = "LUMENOTE_TEST_IS_ON_A_DESKTOP";

int fail(const char* why)
{
    static_cast<void>(std::fprintf(stderr, "harness: %s\n", why));
    return 1;
}

/// Runs this program again where the tests can show windows.
int runOnDesktop(int argc, char** argv, const QStringList& arguments)
{
    const Harness::Surroundings surroundings;
    const QCoreApplication application(argc, argv);
    const Harness::XServer server("1600x900x24");
    if (!surroundings.isComplete() || !server.isRunning())
        return fail("no folders, or no Xvfb, to run with");
    auto environment = server.environment();
    environment.insert(u"QT_SCREEN_SCALE_FACTORS"_qs, u"first=1;second=2"_qs);
    environment.insert(QString::fromLatin1(insideMark), u"1"_qs);
    if (!Harness::Desktop(environment).setUpMonitors())
        return fail("no monitors, since xrandr failed");

    QProcess inside;
    inside.setProcessEnvironment(environment);
    inside.setProcessChannelMode(QProcess::ForwardedChannels);
    inside.start(QCoreApplication::applicationFilePath(), arguments);
    inside.waitForFinished(-1);
    return inside.exitStatus() == QProcess::NormalExit ? inside.exitCode() : 1;
}

} // namespace

int main(int argc, char** argv)
{
    QStringList arguments; // Before GoogleTest takes its own out.
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    testing::InitGoogleTest(&argc, argv);
    if (testing::GTEST_FLAG(list_tests))
        return RUN_ALL_TESTS();
    if (!qEnvironmentVariableIsSet(insideMark))
        return runOnDesktop(argc, argv, arguments);
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
