#include "DesktopFixture.h"

#include <xcb/res.h>

#include <array>
#include <map>
#include <unistd.h>

using namespace Platform;
using Harness::PaintedWindow;

namespace {

enum class Situation { bare, managed, composited };

constexpr QRect windowRect(800, 150, 300, 240);
constexpr std::uint32_t blue = 0x2040c0;
constexpr std::uint32_t green = 0x20a040;

/// With a window manager and a compositor, or without.
class CapturedPixels : public DesktopFixture, public testing::WithParamInterface<Situation> {
protected:
    void SetUp() override
    {
        if (GetParam() != Situation::bare)
            m_windowManager = m_desktop.startWindowManager();
        DesktopFixture::SetUp();
        if (isComposited())
            startCompositor({});
    }

    void TearDown() override
    {
        m_compositor.reset();
        EXPECT_TRUE(Harness::waitFor([this] { return !server().hasCompositor(); }));
    }

    void startCompositor(const QByteArrayList& arguments)
    {
        m_compositor.reset();
        EXPECT_TRUE(Harness::waitFor([this] { return !server().hasCompositor(); }));
        m_compositor = m_desktop.startCompositor(arguments);
        EXPECT_TRUE(Harness::waitFor([this] { return server().hasCompositor(); }));
    }

    static bool isComposited() { return GetParam() == Situation::composited; }

    /// What is really on the screen.
    static QRgb shownPixel(QPoint point)
    {
        const auto origin = Harness::Desktop::firstMonitor.topLeft();
        const auto picture = QGuiApplication::primaryScreen()->grabWindow(
            0, point.x() - origin.x(), point.y() - origin.y(), 1, 1);
        return picture.toImage().pixel(0, 0);
    }

private:
    Harness::Desktop::Program m_windowManager{nullptr, [](QProcess*) {}};
    Harness::Desktop::Program m_compositor{nullptr, [](QProcess*) {}};
};

/// A compositor draws a background of its own where nobody has set one.
class PixelsWithoutCompositor : public CapturedPixels { };
/// Nothing fades without a compositor.
class PixelsUnderCompositor : public CapturedPixels { };

std::string nameOf(const testing::TestParamInfo<Situation>& row)
{
    constexpr std::array names{"bare", "managed", "composited"};
    return names.at(static_cast<size_t>(row.param));
}

INSTANTIATE_TEST_SUITE_P(, CapturedPixels,
    testing::Values(Situation::bare, Situation::managed, Situation::composited), nameOf);
INSTANTIATE_TEST_SUITE_P(
    , PixelsWithoutCompositor, testing::Values(Situation::bare, Situation::managed), nameOf);
INSTANTIATE_TEST_SUITE_P(, PixelsUnderCompositor, testing::Values(Situation::composited), nameOf);

TEST_P(CapturedPixels, aRegionShowsWindowsInTheirOrderBelowOurs)
{
    const PaintedWindow back(windowRect, blue);
    const PaintedWindow front(windowRect.translated(100, 80), green, {"border", "3"});
    const auto backContent = contentOf(back);
    const auto frontContent = contentOf(front);
    const OwnWindow own(windowRect.adjusted(-40, -40, 40, 40));

    const QRect inBack(backContent.topLeft(), QSize(60, 50));
    EXPECT_TRUE(region(inBack) == back.pattern({0, 0, 60, 50}));
    const auto inFront = QRect(frontContent.topLeft(), backContent.bottomRight());
    EXPECT_TRUE(region(inFront) == front.pattern({{}, inFront.size()}));
}

TEST_P(PixelsWithoutCompositor, aRegionShowsTheBackgroundBelowOurWindows)
{
    ASSERT_TRUE(m_desktop.run("xsetroot", {"-mod", "7", "13", "-fg", "#c03020", "-bg", "#104060"}));
    const PaintedWindow partly(windowRect, blue, {"unmanaged", "yes"});
    const auto area = windowRect.adjusted(-100, -60, 50, 50);
    const auto before = region(area);
    EXPECT_TRUE(before.pixel(0, 0) == 0xffc03020 || before.pixel(0, 0) == 0xff104060);
    const OwnWindow own(area.adjusted(20, 20, -20, -20));
    EXPECT_TRUE(region(area) == before);
    EXPECT_TRUE(m_desktop.run("xsetroot", {"-solid", "#204020"}));
    EXPECT_EQ(region({area.topLeft() + QPoint(30, 30), QSize(1, 1)}).pixel(0, 0), 0xff204020);
}

TEST_P(PixelsUnderCompositor, aWindowOfOursThatFadesLeavesNoTrace)
{
    startCompositor({"--fading", "--fade-delta", "30", "--fade-out-step", "0.02", "--shadow"});
    const PaintedWindow below(windowRect, blue);
    const auto content = contentOf(below);
    {
        const OwnWindow own(content.adjusted(-30, -30, 30, 30));
        ASSERT_TRUE(Harness::waitFor(
            [&content] { return shownPixel(content.center()) == OwnWindow::color; }));
    }
    EXPECT_TRUE(region(content) == below.pattern({{}, content.size()}));
    EXPECT_NE(shownPixel(content.center()), below.pattern({{}, content.size()}).pixel(150, 120))
        << "the window had faded already, so that this shows nothing";
}

TEST_P(CapturedPixels, aWindowIsCapturedByItself)
{
    const PaintedWindow covered(windowRect, blue);
    const PaintedWindow cover(windowRect.translated(20, 20), green);
    const OwnWindow own(windowRect.adjusted(-40, -40, 40, 40));
    const auto image = picture(covered.id(), windowRect.size());
    ASSERT_TRUE(image);
    EXPECT_TRUE(*image == covered.pattern({{}, windowRect.size()}));
    EXPECT_EQ(image->format(), QImage::Format_RGB32);

    covered.stop();
    EXPECT_TRUE(picture(covered.id(), windowRect.size()) == *image);

    const PaintedWindow offScreen({-100, 850, 300, 240}, green, {"border", "2"});
    const auto wholeImage = picture(offScreen.id(), windowRect.size());
    ASSERT_TRUE(wholeImage);
    EXPECT_TRUE(*wholeImage == offScreen.pattern({{}, windowRect.size()}));

    const PaintedWindow shadowed(windowRect, blue, {"shadow", "25"});
    const auto inner = windowRect.size() - QSize(50, 50);
    const auto withoutShadow = picture(shadowed.id(), inner);
    ASSERT_TRUE(withoutShadow);
    EXPECT_TRUE(*withoutShadow == shadowed.pattern({{25, 25}, inner}));
}

TEST_P(CapturedPixels, theAlphaOfAWindowCountsUnderACompositor)
{
    const PaintedWindow translucent(windowRect, 0x102030, {"alpha", "80"});
    const auto image = picture(translucent.id(), windowRect.size());
    ASSERT_TRUE(image);
    EXPECT_EQ(image->format(),
        isComposited() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    EXPECT_EQ(*reinterpret_cast<const QRgb*>(image->constScanLine(100)),
        isComposited() ? 0x80102030 : 0xff102030);
}

using Counts = std::map<QByteArray, int>;

void addResources(xcb_connection_t* xcb, std::uint32_t client, Counts& counts)
{
    const X11::Owned<xcb_res_query_client_resources_reply_t> types(
        xcb_res_query_client_resources_reply(
            xcb, xcb_res_query_client_resources(xcb, client), nullptr));
    for (auto type = xcb_res_query_client_resources_types_iterator(types.get()); type.rem > 0;
         xcb_res_type_next(&type)) {
        const X11::Owned<xcb_get_atom_name_reply_t> name(xcb_get_atom_name_reply(
            xcb, xcb_get_atom_name(xcb, type.data->resource_type), nullptr));
        counts[{xcb_get_atom_name_name(name.get()), name->name_len}] +=
            static_cast<int>(type.data->count);
    }
}

/// How many things of each kind this process has on the server. Who asks for news of a window's
/// shape, as window managers and compositors do, adds to what its owner has, so that these don't
/// count.
Counts ownResources()
{
    const std::unique_ptr<xcb_connection_t, X11::Disconnect> xcb(xcb_connect(nullptr, nullptr));
    const xcb_res_client_id_spec_t all{
        .client = XCB_NONE, .mask = XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const X11::Owned<xcb_res_query_version_reply_t> version(
        xcb_res_query_version_reply(xcb.get(), xcb_res_query_version(xcb.get(), 1, 2), nullptr));
    const X11::Owned<xcb_res_query_client_ids_reply_t> ids(xcb_res_query_client_ids_reply(
        xcb.get(), xcb_res_query_client_ids(xcb.get(), 1, &all), nullptr));
    Counts counts;
    for (auto id = xcb_res_query_client_ids_ids_iterator(ids.get()); id.rem > 0;
         xcb_res_client_id_value_next(&id))
        if (xcb_res_client_id_value_value(id.data)[0] == static_cast<std::uint32_t>(getpid()))
            addResources(xcb.get(), id.data->spec.client, counts);
    counts.erase("ShapeEvent");
    return counts;
}

TEST_P(CapturedPixels, nothingIsLeftOnTheServerWhateverIsCaptured)
{
    const PaintedWindow below(windowRect, blue);
    const OwnWindow translucent(windowRect.adjusted(0, 0, -50, -50), OwnWindow::Look::translucent);
    const OwnWindow shaped(windowRect.adjusted(50, 50, 0, 0), OwnWindow::Look::shaped);
    const auto captureAll = [&] {
        EXPECT_FALSE(region(windowRect).isNull());
        EXPECT_TRUE(picture(below.id(), windowRect.size()));
        EXPECT_FALSE(picture(0x7fffff, {10, 10}));
        windows();
    };
    captureAll(); // The last memory that was lent is kept for a while.
    const auto before = ownResources();
    EXPECT_GT(before.size(), 2U);
    constexpr int rounds = 50;
    for (int round = 0; round < rounds; ++round)
        captureAll();
    EXPECT_EQ(ownResources(), before);
}

} // namespace
