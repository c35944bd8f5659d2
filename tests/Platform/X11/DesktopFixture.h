#pragma once

#include "Harness/Desktop.h"
#include "Harness/PaintedWindow.h"
#include "Harness/Waiting.h"
#include "Harness/XClient.h"
#include "OwnWindow.h"
#include "Platform/X11/Session.h"
#include "Platform/X11/X11DisplayServer.h"

#include <array>
#include <gtest/gtest.h>
#include <memory>

/// The display server on the X server of this test program. All rectangles are in pixels of the
/// root.
class DesktopFixture : public testing::Test {
protected:
    void SetUp() override
    {
        auto session = Platform::X11::Session::open({});
        ASSERT_TRUE(session) << qPrintable(session.error().message);
        m_server = std::make_unique<Platform::X11DisplayServer>(*std::move(session));
    }

    void TearDown() override { stopCompositor(); }

    void startCompositor(const QByteArrayList& arguments = {})
    {
        stopCompositor();
        m_compositor = m_desktop.startCompositor(arguments);
        ASSERT_TRUE(Harness::waitFor([this] { return m_server->hasCompositor(); }));
    }

    void stopCompositor()
    {
        m_compositor.reset();
        EXPECT_TRUE(Harness::waitFor([this] { return !m_server || !m_server->hasCompositor(); }));
    }

    Platform::X11DisplayServer& server() { return *m_server; }

    template <typename T>
    static Platform::Result<T> answer(const QFuture<Platform::Result<T>>& future)
    {
        EXPECT_TRUE(Harness::waitForFinished(future));
        return future.result();
    }

    QList<Platform::SharedWindow> windows(
        Platform::ListedWindows windows = Platform::ListedWindows::all)
    {
        auto content = answer(server().shareableContent(windows));
        EXPECT_TRUE(content);
        return content ? content->windows : QList<Platform::SharedWindow>();
    }

    std::optional<Platform::SharedWindow> find(quint32 id)
    {
        for (const auto& window : windows())
            if (window.id == id)
                return window;
        return std::nullopt;
    }

    /// The same once it is listed: a window manager may show a window first.
    Platform::SharedWindow listed(quint32 id)
    {
        std::optional<Platform::SharedWindow> window;
        EXPECT_TRUE(Harness::waitFor([&] {
            window = find(id);
            return window.has_value();
        }));
        return window.value_or(Platform::SharedWindow());
    }

    /// Where the content of a window on the first display is, wherever a window manager has put it.
    QRect contentOf(const Harness::PaintedWindow& painted)
    {
        const auto frame = listed(painted.id()).frame.toRect();
        return frame.translated(Harness::Desktop::firstMonitor.topLeft());
    }

    /// Of the first display.
    QImage region(const QRect& rect)
    {
        return region(0, rect.translated(-Harness::Desktop::firstMonitor.topLeft()), rect.size());
    }

    /// @p points from the corner of the display.
    QImage region(qsizetype screen, const QRectF& points, QSize size)
    {
        const auto image = answer(server().captureImage(
            Platform::DisplayFilter{server().screens().at(screen).displayNumber},
            {.sourceRect = points, .pixelSize = size, .colorSpace = {}}));
        EXPECT_TRUE(image) << qPrintable(image ? QString() : image.error().message);
        return image.value_or(QImage());
    }

    Platform::Result<QImage> picture(quint32 id, QSize size)
    {
        return answer(server().captureImage(
            Platform::WindowFilter{id}, {.sourceRect = {}, .pixelSize = size, .colorSpace = {}}));
    }

    const Harness::Desktop m_desktop;
    const Harness::XClient m_other;
    Harness::Desktop::Program m_windowManager{nullptr, nullptr};

private:
    Harness::Desktop::Program m_compositor{nullptr, nullptr};
    std::unique_ptr<Platform::X11DisplayServer> m_server;
};

/// What else runs on the desktop.
enum class Situation { nothing, openbox, openboxAndPicom };

inline std::string nameOf(const testing::TestParamInfo<Situation>& row)
{
    constexpr std::array names{"nothing", "openbox", "openboxAndPicom"};
    return names.at(static_cast<size_t>(row.param));
}

inline const auto allSituations =
    testing::Values(Situation::nothing, Situation::openbox, Situation::openboxAndPicom);
