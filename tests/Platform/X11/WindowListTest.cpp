#include "DesktopFixture.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <array>

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

private:
    Harness::Desktop::Program m_windowManager{nullptr, [](QProcess*) {}};
};

TEST_F(ListedWindows, titlesAndNamesAreTold)
{
    const QDir entries(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
        + QStringLiteral("/applications"));
    ASSERT_TRUE(entries.mkpath(QStringLiteral(".")));
    QFile entry(entries.filePath(QStringLiteral("painter.desktop")));
    ASSERT_TRUE(entry.open(QIODevice::WriteOnly));
    entry.write("[Desktop Entry]\nName=The Painter\n");
    entry.close();

    struct Row {
        const char* name;
        QByteArrayList options;
        QByteArray title;
        QByteArray application;
    };
    const std::array rows{
        Row{"utf8", {"name", "東京 — café", "latin-name", "?"}, "東京 — café", {}},
        Row{"latin1", {"latin-name", "café"}, "café", {}},
        Row{"none", {}, {}, {}},
        Row{"class", {"class", "Unknown-Tool"}, {}, "Unknown-Tool"},
        Row{"desktopEntry", {"class", "Painter"}, {}, "The Painter"},
    };
    for (const auto& row : rows) {
        const PaintedWindow painted(rect, 0x336699, row.options);
        const auto window = listed(painted.id());
        EXPECT_EQ(window.title.toUtf8(), row.title) << row.name;
        EXPECT_EQ(window.application.toUtf8(), row.application) << row.name;
        EXPECT_EQ(window.processID, painted.processID()) << row.name;
    }
}

TEST_F(ListedWindows, whatIsNoNormalWindowIsToldApart)
{
    struct Row {
        const char* name;
        QByteArrayList options;
        std::optional<int> layer; ///< None where it isn't listed.
    };
    const std::array rows{
        Row{"normal", {}, 0},
        Row{"dialog", {"type", "DIALOG"}, 0},
        Row{"dock", {"type", "DOCK"}, 20},
        Row{"desktop", {"type", "DESKTOP"}, -1},
        Row{"toolPalette", {"type", "UTILITY"}, 3},
        Row{"alwaysOnTop", {"state", "ABOVE"}, 3},
        Row{"menu", {"unmanaged", "yes"}, std::nullopt},
    };
    for (const auto& row : rows) {
        const PaintedWindow painted(rect, 0x336699, row.options);
        std::optional<SharedWindow> window;
        // The window manager applies a state after it has shown the window.
        EXPECT_TRUE(Harness::waitFor([&] {
            window = find(painted.id());
            return window.has_value() == row.layer.has_value()
                && (!window || window->layer == *row.layer);
        })) << row.name;
        const auto withoutDesktop = windows(Platform::ListedWindows::withoutDesktops);
        const bool isListed = std::ranges::any_of(
            withoutDesktop, [&](const auto& each) { return each.id == painted.id(); });
        EXPECT_EQ(isListed, row.layer && *row.layer >= 0) << row.name;
    }
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
