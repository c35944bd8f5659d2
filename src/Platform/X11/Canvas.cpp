#include "Platform/X11/Canvas.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

namespace Platform::X11 {

namespace {

constexpr std::uint8_t depth = 32;
constexpr std::uint32_t allPlanes = std::numeric_limits<std::uint32_t>::max();

QImage copyOf(const xcb_get_image_reply_t* reply, QSize size, QImage::Format format)
{
    QImage image(size, format);
    const auto rowBytes = static_cast<std::size_t>(size.width()) * 4;
    const auto* const bytes = xcb_get_image_data(reply);
    for (int y = 0; y < size.height(); ++y)
        std::memcpy(image.scanLine(y), bytes + rowBytes * static_cast<std::size_t>(y), rowBytes);
    return image;
}

} // namespace

Canvas::Canvas(Connection& connection, const PictureFormats& formats,
    std::shared_ptr<SharedMemoryPool> pool, PixelTransport transport)
    : m_connection(connection)
    , m_formats(formats)
    , m_pool(std::move(pool))
    , m_transport(transport)
{
}

Canvas::~Canvas()
{
    if (m_memory) // No image came of it.
        m_memory->detach(m_connection);
}

void Canvas::create(QSize size, Filling filling)
{
    m_size = size;
    if (m_transport.hasSharedMemory)
        m_memory = m_pool->take(m_connection,
            static_cast<std::size_t>(size.width()) * static_cast<std::size_t>(size.height()) * 4);
    createPixmap();
    m_picture.emplace(m_connection);
    require(xcb_render_create_picture_checked(
        m_connection.xcb(), m_picture->id(), m_pixmap->id(), m_formats.argb(), 0, nullptr));
    if (filling != Filling::undefined)
        fill(filling);
}

void Canvas::createPixmap()
{
    const auto root = m_connection.root();
    const auto width = static_cast<std::uint16_t>(m_size.width());
    const auto height = static_cast<std::uint16_t>(m_size.height());
    m_pixmap.emplace(m_connection);
    require(drawsIntoMemory() ? xcb_shm_create_pixmap_checked(
                m_connection.xcb(), m_pixmap->id(), root, width, height, depth, m_memory->id(), 0)
                              : xcb_create_pixmap_checked(
                                  m_connection.xcb(), depth, m_pixmap->id(), root, width, height));
}

void Canvas::fill(Filling filling)
{
    const xcb_render_color_t color{.red = 0,
        .green = 0,
        .blue = 0,
        .alpha = static_cast<std::uint16_t>(filling == Filling::black ? 0xffff : 0)};
    const xcb_rectangle_t all{.x = 0,
        .y = 0,
        .width = static_cast<std::uint16_t>(m_size.width()),
        .height = static_cast<std::uint16_t>(m_size.height())};
    xcb_render_fill_rectangles(
        m_connection.xcb(), XCB_RENDER_PICT_OP_SRC, m_picture->id(), color, 1, &all);
}

void Canvas::requestImage()
{
    auto* const xcb = m_connection.xcb();
    const auto pixmap = m_pixmap->id();
    const auto width = static_cast<std::uint16_t>(m_size.width());
    const auto height = static_cast<std::uint16_t>(m_size.height());
    constexpr std::uint8_t format = XCB_IMAGE_FORMAT_Z_PIXMAP;
    if (!drawsIntoMemory() && m_memory)
        m_lastRequest = {xcb_shm_get_image(
            xcb, pixmap, 0, 0, width, height, allPlanes, format, m_memory->id(), 0)
                             .sequence};
    else if (!drawsIntoMemory())
        m_lastRequest = {
            xcb_get_image(xcb, format, pixmap, 0, 0, width, height, allPlanes).sequence};
    else if (!m_connection.isDone(m_required.back()))
        m_lastRequest = {xcb_get_input_focus(xcb).sequence}; // Answered when the others are done.
    xcb_flush(xcb);
}

Result<QImage> Canvas::image(QImage::Format format)
{
    Owned<xcb_generic_reply_t> answer;
    if (m_lastRequest)
        answer = m_connection.reply<xcb_generic_reply_t>(*m_lastRequest);
    if ((m_lastRequest && !answer) || !haveRequiredSucceeded())
        return tl::make_unexpected(m_connection.failure(QStringLiteral("reading pixels")));
    if (m_memory)
        return m_pool->lend(std::move(m_memory), m_size, format);
    return copyOf(reinterpret_cast<const xcb_get_image_reply_t*>(answer.get()), m_size, format);
}

bool Canvas::haveRequiredSucceeded()
{
    return std::ranges::all_of(
        m_required, [this](xcb_void_cookie_t cookie) { return m_connection.hasSucceeded(cookie); });
}

} // namespace Platform::X11
