#pragma once

#include "Platform/X11/Canvas.h"
#include "Platform/X11/Server.h"
#include "Platform/X11/WindowTree.h"

#include <QPoint>
#include <QRegion>

#include <vector>

namespace Platform::X11 {

/// Draws on a canvas what is on the screen. Areas are in pixels of the root. The server is grabbed
/// meanwhile.
class WindowPainter {
public:
    /// @p origin is the point of the root where the canvas begins. Without a compositor the alpha
    /// of a window means nothing.
    WindowPainter(Server& server, Canvas& canvas, QPoint origin, bool hasCompositor);

    /// What one sees there.
    void paintScreen(const QRect& area) const;

    /// What one would see there if there were only @p windows, the frontmost first.
    void paint(const std::vector<TopLevel>& windows, const QRegion& area) const;

    /// What a window shows, whatever lies on top of it: by @p operation, of Render.
    void paintWindow(const TopLevel& window, const QRegion& area, std::uint8_t operation) const;

    /// Whether something may show through @p window.
    bool isTranslucent(const TopLevel& window) const;

private:
    void paintBackground(const QRegion& area) const;
    void paintBackgroundPixmap(xcb_pixmap_t pixmap, const QRegion& area) const;
    void paintBackgroundProbe(const QRegion& area) const;
    xcb_pixmap_t backgroundPixmap() const;
    bool hasAlpha(const TopLevel& window) const;
    void clip(const QRegion& area) const;
    void clipToShape(const TopLevel& window, const QRegion& area) const;
    void composite(std::uint8_t operation, xcb_render_picture_t source, QPoint sourceOrigin,
        const QRect& area) const;

    Server& m_server;
    Connection& m_connection;
    Canvas& m_canvas;
    QPoint m_origin;
    bool m_hasCompositor;
};

} // namespace Platform::X11
