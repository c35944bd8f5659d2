#include "Platform/X11/WindowPainter.h"

#include <xcb/composite.h>
#include <xcb/xfixes.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace Platform::X11 {

namespace {

using FixesRegion = Resource<xcb_xfixes_destroy_region>;
using Window = Resource<xcb_destroy_window>;

/// A window without pixels of its own but the background of the root, below all others: where the
/// root can be seen it changes nothing, and its pixmap shows what the others cover.
void showProbe(const Connection& connection, xcb_window_t probe, const QRect& area)
{
    const auto& screen = connection.screen();
    const std::array<std::uint32_t, 2> attributes{XCB_BACK_PIXMAP_PARENT_RELATIVE, 1};
    xcb_create_window(connection.xcb(), screen.root_depth, probe, screen.root,
        static_cast<std::int16_t>(area.x()), static_cast<std::int16_t>(area.y()),
        static_cast<std::uint16_t>(area.width()), static_cast<std::uint16_t>(area.height()), 0,
        XCB_WINDOW_CLASS_INPUT_OUTPUT, screen.root_visual,
        XCB_CW_BACK_PIXMAP | XCB_CW_OVERRIDE_REDIRECT, attributes.data());
    const std::uint32_t below = XCB_STACK_MODE_BELOW;
    xcb_configure_window(connection.xcb(), probe, XCB_CONFIG_WINDOW_STACK_MODE, &below);
    xcb_map_window(connection.xcb(), probe);
}

std::vector<xcb_rectangle_t> rectanglesOf(const QRegion& region)
{
    std::vector<xcb_rectangle_t> rectangles;
    for (const auto& rect : region)
        rectangles.push_back({.x = static_cast<std::int16_t>(rect.x()),
            .y = static_cast<std::int16_t>(rect.y()),
            .width = static_cast<std::uint16_t>(rect.width()),
            .height = static_cast<std::uint16_t>(rect.height())});
    return rectangles;
}

} // namespace

WindowPainter::WindowPainter(Server& server, Canvas& canvas, QPoint origin, bool hasCompositor)
    : m_server(server)
    , m_connection(server.connection())
    , m_canvas(canvas)
    , m_origin(origin)
    , m_hasCompositor(hasCompositor)
{
}

void WindowPainter::paintScreen(const QRect& area) const
{
    const Picture picture(m_connection);
    const auto format = m_server.formats().ofVisual(m_connection.screen().root_visual).format;
    const std::uint32_t withWindows = XCB_SUBWINDOW_MODE_INCLUDE_INFERIORS;
    m_canvas.require(xcb_render_create_picture_checked(m_connection.xcb(), picture.id(),
        m_connection.root(), format, XCB_RENDER_CP_SUBWINDOW_MODE, &withWindows));
    composite(XCB_RENDER_PICT_OP_SRC, picture.id(), {}, area);
}

void WindowPainter::paint(const std::vector<TopLevel>& windows, const QRegion& area) const
{
    struct Layer {
        const TopLevel& window;
        QRegion visible;
    };
    std::vector<Layer> layers;
    auto uncovered = area;
    for (const auto& window : windows) {
        const auto visible = uncovered & window.rect;
        if (!window.hasPixels || visible.isEmpty())
            continue;
        layers.push_back({window, visible});
        if (!isTranslucent(window))
            uncovered -= window.rect;
    }
    if (!uncovered.isEmpty())
        paintBackground(uncovered);
    std::for_each(layers.rbegin(), layers.rend(), [this](const Layer& layer) {
        paintWindow(layer.window, layer.visible, XCB_RENDER_PICT_OP_OVER);
    });
}

void WindowPainter::paintWindow(
    const TopLevel& window, const QRegion& area, std::uint8_t operation) const
{
    const auto visual = m_server.formats().ofVisual(window.visual);
    const auto format =
        visual.hasAlpha && !m_hasCompositor ? m_server.formats().rgb() : visual.format;
    const Pixmap pixmap(m_connection); // Named anew each time: with each size it is another one.
    xcb_composite_name_window_pixmap(m_connection.xcb(), window.id, pixmap.id());
    const Picture picture(m_connection);
    xcb_render_create_picture(m_connection.xcb(), picture.id(), pixmap.id(), format, 0, nullptr);
    if (window.isShaped)
        clipToShape(window, area);
    else
        clip(area);
    composite(operation, picture.id(), window.rect.topLeft(), area.boundingRect());
}

bool WindowPainter::hasAlpha(const TopLevel& window) const
{
    return m_hasCompositor && m_server.formats().ofVisual(window.visual).hasAlpha;
}

bool WindowPainter::isTranslucent(const TopLevel& window) const
{
    return window.isShaped || hasAlpha(window);
}

void WindowPainter::paintBackground(const QRegion& area) const
{
    // A compositor draws the wallpaper from the pixmap that those who set it leave behind; the
    // server knows nothing but the background of the root.
    const auto pixmap = m_hasCompositor ? backgroundPixmap() : XCB_NONE;
    if (pixmap != XCB_NONE)
        paintBackgroundPixmap(pixmap, area);
    else
        paintBackgroundProbe(area);
}

xcb_pixmap_t WindowPainter::backgroundPixmap() const
{
    auto* const xcb = m_connection.xcb();
    const auto property = m_connection.reply<xcb_get_property_reply_t>(xcb_get_property(
        xcb, 0, m_connection.root(), m_connection.atoms().rootPixmap, XCB_ATOM_PIXMAP, 0, 1));
    xcb_pixmap_t pixmap = XCB_NONE;
    if (!property || xcb_get_property_value_length(property.get()) != sizeof pixmap)
        return XCB_NONE;
    std::memcpy(&pixmap, xcb_get_property_value(property.get()), sizeof pixmap);
    const auto geometry =
        m_connection.reply<xcb_get_geometry_reply_t>(xcb_get_geometry(xcb, pixmap));
    const bool isUsable = geometry && geometry->depth == m_connection.screen().root_depth;
    return isUsable ? pixmap : XCB_NONE;
}

void WindowPainter::paintBackgroundPixmap(xcb_pixmap_t pixmap, const QRegion& area) const
{
    const Picture picture(m_connection);
    const std::uint32_t repeated = XCB_RENDER_REPEAT_NORMAL;
    xcb_render_create_picture(m_connection.xcb(), picture.id(), pixmap,
        m_server.formats().ofVisual(m_connection.screen().root_visual).format, XCB_RENDER_CP_REPEAT,
        &repeated);
    clip(area);
    composite(XCB_RENDER_PICT_OP_SRC, picture.id(), {}, area.boundingRect());
}

void WindowPainter::paintBackgroundProbe(const QRegion& area) const
{
    const auto rect = area.boundingRect();
    const Window probe(m_connection);
    showProbe(m_connection, probe.id(), rect);
    TopLevel window;
    window.id = probe.id();
    window.rect = rect;
    window.visual = m_connection.screen().root_visual;
    paintWindow(window, area, XCB_RENDER_PICT_OP_SRC);
}

void WindowPainter::clip(const QRegion& area) const
{
    const auto rectangles = rectanglesOf(area.translated(-m_origin));
    xcb_render_set_picture_clip_rectangles(m_connection.xcb(), m_canvas.picture(), 0, 0,
        static_cast<std::uint32_t>(rectangles.size()), rectangles.data());
}

void WindowPainter::clipToShape(const TopLevel& window, const QRegion& area) const
{
    auto* const xcb = m_connection.xcb();
    const auto rectangles = rectanglesOf(area.translated(-m_origin));
    const FixesRegion visible(m_connection);
    const FixesRegion shape(m_connection);
    xcb_xfixes_create_region(
        xcb, visible.id(), static_cast<std::uint32_t>(rectangles.size()), rectangles.data());
    xcb_xfixes_create_region_from_window(xcb, shape.id(), window.id, XCB_SHAPE_SK_BOUNDING);
    const QPoint insideBorder(window.borderWidth, window.borderWidth);
    const auto offset = window.rect.topLeft() + insideBorder - m_origin;
    xcb_xfixes_translate_region(xcb, shape.id(), static_cast<std::int16_t>(offset.x()),
        static_cast<std::int16_t>(offset.y()));
    xcb_xfixes_intersect_region(xcb, visible.id(), shape.id(), visible.id());
    xcb_xfixes_set_picture_clip_region(xcb, m_canvas.picture(), visible.id(), 0, 0);
}

void WindowPainter::composite(std::uint8_t operation, xcb_render_picture_t source,
    QPoint sourceOrigin, const QRect& area) const
{
    const auto from = area.topLeft() - sourceOrigin;
    const auto to = area.topLeft() - m_origin;
    m_canvas.require(xcb_render_composite_checked(m_connection.xcb(), operation, source, XCB_NONE,
        m_canvas.picture(), static_cast<std::int16_t>(from.x()),
        static_cast<std::int16_t>(from.y()), 0, 0, static_cast<std::int16_t>(to.x()),
        static_cast<std::int16_t>(to.y()), static_cast<std::uint16_t>(area.width()),
        static_cast<std::uint16_t>(area.height())));
}

} // namespace Platform::X11
