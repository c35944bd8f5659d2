#include "DesktopFixture.h"

#include <QSignalSpy>

#include <xcb/xcb.h>

using namespace Platform;
using Harness::PaintedWindow;

namespace {

class Screens : public DesktopFixture {
protected:
    void TearDown() override
    {
        DesktopFixture::TearDown();
        m_desktop.plugSecondMonitor();
        Harness::waitFor([] { return QGuiApplication::screens().size() == 2; });
    }
};

TEST_F(Screens, theFirstIsTheOriginAndAnotherHasItsOwnScale)
{
    const auto screens = server().screens();
    ASSERT_EQ(screens.size(), 2);
    EXPECT_EQ(screens.at(0).frame, QRectF(0, 0, 900, 800));
    EXPECT_EQ(screens.at(0).backingScaleFactor, 1);
    // Its upper left corner is 700 to the left of the first one's, and 50 below; it is half as
    // large in points as in pixels.
    EXPECT_EQ(screens.at(1).frame, QRectF(-700, 800 - 50 - 300, 350, 300));
    EXPECT_EQ(screens.at(1).backingScaleFactor, 2);
    EXPECT_FALSE(screens.at(1).colorSpace.isValid());

    QCursor::setPos(QGuiApplication::screens().at(0)->geometry().topLeft() + QPoint(30, 20));
    EXPECT_TRUE(
        Harness::waitFor([this] { return server().pointerPosition() == QPointF(30, 780); }));
}

TEST_F(Screens, pixelsAndFramesOfEachAreItsOwn)
{
    const PaintedWindow window({100, 200, 240, 160}, 0x4080c0);
    const auto shared = listed(window.id());
    EXPECT_EQ(shared.pointPixelScale, 2);
    EXPECT_EQ(shared.frame, QRectF(-700 + 50, 50 + 50, 120, 80));

    EXPECT_TRUE(region(1, {50, 50, 120, 80}, {240, 160}) == window.pattern({0, 0, 240, 160}));
    EXPECT_TRUE(region(1, {60.5, 50, 10, 10}, {20, 20}) == window.pattern({21, 0, 20, 20}));
    const auto tooLarge = region(1, {345, 0, 10, 10}, {20, 20});
    EXPECT_EQ(tooLarge.size(), QSize(20, 20));
}

TEST_F(Screens, unpluggingIsToldOnceAndNoticedByCaptures)
{
    const auto before = server().screens();
    QSignalSpy changes(&server(), &DisplayServer::screensChanged);
    ASSERT_TRUE(m_desktop.unplugSecondMonitor());
    ASSERT_TRUE(Harness::waitFor([&changes] { return !changes.isEmpty(); }));
    EXPECT_EQ(server().screens().size(), 1);
    const auto content = answer(server().shareableContent(ListedWindows::all));
    EXPECT_EQ(content->displays, QList{before.at(0).displayNumber});
    EXPECT_FALSE(answer(server().captureImage(DisplayFilter{before.at(1).displayNumber},
        {.sourceRect = {0, 0, 10, 10}, .pixelSize = {20, 20}, .colorSpace = {}})));

    ASSERT_TRUE(m_desktop.plugSecondMonitor());
    ASSERT_TRUE(Harness::waitFor([&changes] { return changes.size() > 1; }));
    EXPECT_EQ(server().screens(), before);
    EXPECT_EQ(changes.size(), 2);
}

TEST_F(Screens, coloursAreThoseOfTheProfileThatTheServerHasForThem)
{
    QSignalSpy changes(&server(), &DisplayServer::screensChanged);
    const auto profile = QColorSpace(QColorSpace::AdobeRgb).iccProfile();
    const std::unique_ptr<xcb_connection_t, X11::Disconnect> xcb(xcb_connect(nullptr, nullptr));
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(xcb.get())).data->root;
    const QByteArray property("_ICC_PROFILE_1");
    const X11::Owned<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(xcb.get(),
        xcb_intern_atom(
            xcb.get(), 0, static_cast<std::uint16_t>(property.size()), property.constData()),
        nullptr));
    xcb_change_property(xcb.get(), XCB_PROP_MODE_REPLACE, root, atom->atom, XCB_ATOM_CARDINAL, 8,
        static_cast<std::uint32_t>(profile.size()), profile.constData());
    xcb_flush(xcb.get());
    ASSERT_TRUE(Harness::waitFor([&changes] { return !changes.isEmpty(); }));
    EXPECT_FALSE(server().screens().at(0).colorSpace.isValid());
    EXPECT_EQ(server().screens().at(1).colorSpace, QColorSpace::fromIccProfile(profile));

    xcb_delete_property(xcb.get(), root, atom->atom);
    xcb_flush(xcb.get());
    EXPECT_TRUE(Harness::waitFor([&changes] { return changes.size() > 1; }));
}

} // namespace
