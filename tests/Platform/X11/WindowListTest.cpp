#include "DesktopFixture.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

using namespace Platform;
using Harness::PaintedWindow;

namespace {

constexpr QRect rect(800, 150, 300, 240);

class ListedWindows : public DesktopFixture {
protected:
    void SetUp() override
    {
        m_windowManager = m_desktop.startWindowManager();
        DesktopFixture::SetUp();
    }
};

TEST_F(ListedWindows, titlesAndNamesAreTold)
{
    const QDir entries(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
        + u"/applications"_qs);
    ASSERT_TRUE(entries.mkpath(u"."_qs));
    QFile entry(entries.filePath(u"painter.desktop"_qs));
    ASSERT_TRUE(entry.open(QIODevice::WriteOnly));
    entry.write("[Desktop Entry]\nName=The Painter\n");
    entry.close();

    const auto check = [&](const char* name, const QByteArrayList& options, const QByteArray& title,
                           const QByteArray& application) {
        SCOPED_TRACE(name);
        const PaintedWindow painted(rect, 0x336699, options);
        const auto window = listed(painted.id());
        EXPECT_EQ(window.title.toUtf8(), title);
        EXPECT_EQ(window.application.toUtf8(), application);
        EXPECT_EQ(window.processID, painted.processID());
    };
    check("utf8", {"name", "東京 — café", "latin-name", "?"}, "東京 — café", {});
    check("latin1", {"latin-name", "café"}, "café", {});
    check("none", {}, {}, {});
    check("class", {"class", "Unknown-Tool"}, {}, "Unknown-Tool");
    check("desktopEntry", {"class", "Painter"}, {}, "The Painter");
}

TEST_F(ListedWindows, whatIsNoNormalWindowIsToldApart)
{
    const auto check = [&](const char* name, const QByteArrayList& options,
                           std::optional<int> layer) {
        SCOPED_TRACE(name);
        const PaintedWindow painted(rect, 0x336699, options);
        std::optional<SharedWindow> window;
        // The window manager applies a state after it has shown the window.
        EXPECT_TRUE(Harness::waitFor([&] {
            window = find(painted.id());
            return window.has_value() == layer.has_value() && (!window || window->layer == *layer);
        }));
        const auto withoutDesktop = windows(Platform::ListedWindows::withoutDesktops);
        const bool isListed = std::ranges::any_of(
            withoutDesktop, [&](const auto& each) { return each.id == painted.id(); });
        EXPECT_EQ(isListed, layer && *layer >= 0);
    };
    check("normal", {}, 0);
    check("dock", {"type", "DOCK"}, 20);
    check("desktop", {"type", "DESKTOP"}, -1);
    check("toolPalette", {"type", "UTILITY"}, 3);
    check("alwaysOnTop", {"state", "ABOVE"}, 3);
    check("menu", {"unmanaged", "yes"}, std::nullopt);
}

TEST_F(ListedWindows, aMinimisedWindowIsNeitherListedNorCaptured)
{
    const PaintedWindow painted(rect, 0x336699);
    listed(painted.id());
    ASSERT_TRUE(m_desktop.run("xdotool", {"windowminimize", QByteArray::number(painted.id())}));
    EXPECT_TRUE(Harness::waitFor([&] { return !find(painted.id()); }));
    // It is marked first and taken off the screen then.
    Result<QImage> image;
    EXPECT_TRUE(Harness::waitFor([&] {
        image = picture(painted.id(), rect.size());
        return !image;
    }));
    EXPECT_EQ(image.error().kind, Error::Kind::windowGone);
}

TEST_F(ListedWindows, oursAreMarkedInsideTheirFramesToo)
{
    const OwnWindow own(rect);
    const auto window = listed(static_cast<quint32>(own.winId()));
    EXPECT_TRUE(window.isOwn);
    EXPECT_EQ(window.frame.size(), QSizeF(rect.size()));
}

} // namespace
