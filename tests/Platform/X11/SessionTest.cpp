#include "Platform/X11/Session.h"

#include "Harness/Desktop.h"
#include "Harness/Waiting.h"
#include "Harness/XServer.h"
#include "Platform/X11/RegionCapture.h"

#include <QTemporaryDir>

#include <csignal>
#include <gtest/gtest.h>

using namespace Platform;
using namespace Platform::X11;
using namespace std::chrono_literals;

namespace {

constexpr QRect area(0, 0, 100, 80);

Result<QImage> captured(const QFuture<Result<QImage>>& future)
{
    EXPECT_TRUE(Harness::waitForFinished(future));
    return future.result();
}

Result<QImage> capture(Server& server)
{
    OwnWindows none;
    none.frames = std::make_shared<OwnFrames>();
    return captureRegion(server, area, area.size(), none, false);
}

Result<std::unique_ptr<Session>> open(
    const Harness::XServer& server, std::chrono::milliseconds patience = 60s)
{
    return Session::open({.display = server.display().toLatin1(), .patience = patience});
}

TEST(SessionTest, withoutAServerThereIsNone)
{
    EXPECT_FALSE(Session::open({})); // The harness has no DISPLAY.
    EXPECT_FALSE(Session::open({.display = ":4095"}));
    EXPECT_FALSE(Session::open({.display = "nonsense"}));
}

TEST(SessionTest, anyDepthOfTheScreenGivesItsColours)
{
    const auto check = [](const char* screen, int tolerance, const QByteArrayList& arguments = {}) {
        SCOPED_TRACE(screen);
        const Harness::XServer server(screen, arguments);
        ASSERT_TRUE(server.isRunning());
        const Harness::Desktop desktop(server.environment());
        ASSERT_TRUE(desktop.run("xsetroot", {"-solid", "#c04020"}));
        const auto session = open(server);
        ASSERT_TRUE(session);
        const auto image = captured((*session)->run<QImage>(capture));
        ASSERT_TRUE(image) << qPrintable(image.error().message);
        EXPECT_EQ(image->format(), QImage::Format_RGB32);
        const auto pixel = *reinterpret_cast<const QRgb*>(image->constScanLine(50));
        EXPECT_EQ(qAlpha(pixel), 0xff);
        EXPECT_NEAR(qRed(pixel), 0xc0, tolerance);
        EXPECT_NEAR(qGreen(pixel), 0x40, tolerance);
        EXPECT_NEAR(qBlue(pixel), 0x20, tolerance);
    };
    check("640x480x24", 0);
    check("640x480x24", 0, {"-extension", "MIT-SHM"});
    check("640x480x30", 1);
    check("640x480x16", 8);
}

TEST(SessionTest, aServerThatIsKilledInTheMiddleOfACaptureGivesAnError)
{
    const Harness::XServer server;
    const auto session = open(server);
    ASSERT_TRUE(session);
    const auto image = captured((*session)->run<QImage>([&server](Server& x11) {
        const ServerGrab grab(x11.connection());
        x11.connection().finish();
        server.signal(SIGKILL);
        return capture(x11);
    }));
    ASSERT_FALSE(image);
    EXPECT_EQ(image.error().kind, Error::Kind::failed);
    EXPECT_FALSE(captured((*session)->run<QImage>(capture)));
}

TEST(SessionTest, aServerThatHangsIsGivenUpAndUsedAgainOnceItAnswers)
{
    const Harness::XServer server;
    const auto session = open(server, 200ms);
    ASSERT_TRUE(session);
    server.signal(SIGSTOP);
    EXPECT_FALSE(captured((*session)->run<QImage>(capture)));
    EXPECT_FALSE(open(server, 200ms));
    server.signal(SIGCONT);
    EXPECT_TRUE(Harness::waitFor(
        [&session] { return captured((*session)->run<QImage>(capture)).has_value(); }));
    const Harness::Desktop other(server.environment());
    EXPECT_TRUE(other.run("xsetroot", {"-solid", "#204060"})) << "nothing is left grabbed";
}

TEST(SessionTest, workThatWaitsWhenTheSessionEndsIsAnswered)
{
    const Harness::XServer server;
    auto session = open(server);
    ASSERT_TRUE(session);
    server.signal(SIGSTOP);
    const QList futures{(*session)->run<QImage>(capture), (*session)->run<QImage>(capture)};
    session->reset();
    for (const auto& future : futures)
        EXPECT_FALSE(captured(future));
    server.signal(SIGCONT);
}

TEST(SessionTest, aServerThatLacksAnExtensionSaysWhich)
{
    for (const auto* extension : {"COMPOSITE", "RENDER", "XFIXES"}) {
        const Harness::XServer server("640x480x24", {"-extension", extension});
        const auto session = open(server);
        ASSERT_TRUE(session);
        const auto image = captured((*session)->run<QImage>(capture));
        ASSERT_FALSE(image);
        EXPECT_EQ(image.error().kind, Error::Kind::failed);
        EXPECT_TRUE(image.error().message.contains(QLatin1String(extension), Qt::CaseInsensitive))
            << qPrintable(image.error().message);
        EXPECT_TRUE((*session)->isGranted());
    }
}

TEST(SessionTest, aClientThatTheServerDoesNotTrustIsDenied)
{
    const QTemporaryDir folder;
    const auto keys = folder.filePath(u"keys"_qs).toUtf8();
    const auto untrustedKeys = folder.filePath(u"untrusted"_qs).toUtf8();
    const auto keyOf = [](const QByteArray& display) {
        return QByteArrayList{
            "add", display, "MIT-MAGIC-COOKIE-1", "0123456789abcdef0123456789abcdef"};
    };
    const Harness::Desktop tools;
    // A server reads its keys when the first client comes, and which display they are for is
    // nothing to it.
    ASSERT_TRUE(tools.run("xauth", QByteArrayList{"-f", keys} + keyOf(":0")));
    const Harness::XServer server("640x480x24", {"-auth", keys, "+extension", "SECURITY"});
    ASSERT_TRUE(server.isRunning());
    ASSERT_TRUE(tools.run("xauth", QByteArrayList{"-f", keys} + keyOf(server.display().toUtf8())));

    auto environment = server.environment();
    environment.insert(u"XAUTHORITY"_qs, QString::fromUtf8(keys));
    ASSERT_TRUE(Harness::Desktop(environment)
                    .run("xauth",
                        {"-f", untrustedKeys, "generate", server.display().toUtf8(),
                            "MIT-MAGIC-COOKIE-1", "untrusted"}));

    qputenv("XAUTHORITY", keys);
    const auto trusted = open(server);
    qputenv("XAUTHORITY", untrustedKeys);
    const auto untrusted = open(server);
    qunsetenv("XAUTHORITY");
    ASSERT_TRUE(trusted);
    EXPECT_TRUE((*trusted)->isGranted());
    EXPECT_TRUE(captured((*trusted)->run<QImage>(capture)));
    ASSERT_TRUE(untrusted);
    EXPECT_FALSE((*untrusted)->isGranted());
    const auto image = captured((*untrusted)->run<QImage>(capture));
    ASSERT_FALSE(image);
    EXPECT_EQ(image.error().kind, Error::Kind::permissionDenied);
}

} // namespace
