#include "Platform/X11/Server.h"

#include <QSysInfo>

#include <xcb/composite.h>
#include <xcb/randr.h>
#include <xcb/shape.h>
#include <xcb/xfixes.h>

#include <array>
#include <limits>
#include <utility>

namespace Platform::X11 {

namespace {

bool isPresent(const Connection& connection, xcb_extension_t* extension)
{
    const auto* const data = xcb_get_extension_data(connection.xcb(), extension);
    return data != nullptr && data->present != 0;
}

Error missing(const char* extension)
{
    return {.message = QStringLiteral("the X server lacks the %1 extension")
                           .arg(QString::fromLatin1(extension))};
}

/// Whether the server lets us read the screen.
std::optional<Error> findRefusal(Connection& connection)
{
    const auto pixel = connection.reply<xcb_get_image_reply_t>(
        xcb_get_image(connection.xcb(), XCB_IMAGE_FORMAT_Z_PIXMAP, connection.root(), 0, 0, 1, 1,
            std::numeric_limits<std::uint32_t>::max()));
    if (pixel)
        return std::nullopt;
    auto error = connection.failure(QStringLiteral("reading the screen"));
    if (connection.wasRefused()) // The code depends on the server's way to refuse.
        error.kind = Error::Kind::permissionDenied;
    return error;
}

} // namespace

Server::Server(std::unique_ptr<Connection> connection, std::shared_ptr<const EventFile> onReturn)
    : m_connection(std::move(connection))
    , m_pool(std::make_shared<SharedMemoryPool>(std::move(onReturn)))
    , m_obstacle(findObstacle())
{
    if (!m_obstacle)
        xcb_composite_redirect_subwindows(
            m_connection->xcb(), m_connection->root(), XCB_COMPOSITE_REDIRECT_AUTOMATIC);
}

std::optional<Error> Server::findObstacle()
{
    if (auto refusal = findRefusal(*m_connection))
        return refusal;
    if (auto missing = findMissingExtension())
        return missing;
    const bool isLittleEndian =
        xcb_get_setup(m_connection->xcb())->image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST;
    if (isLittleEndian != (QSysInfo::ByteOrder == QSysInfo::LittleEndian))
        return Error{.message = QStringLiteral("the X server has another order of bytes")};

    m_transport = pixelTransport();
    const auto formats = m_connection->reply<xcb_render_query_pict_formats_reply_t>(
        xcb_render_query_pict_formats(m_connection->xcb()));
    if (!formats)
        return m_connection->failure(QStringLiteral("asking for picture formats"));
    m_formats = PictureFormats(formats.get(), m_connection->screenNumber());
    if (m_formats.argb() == XCB_NONE || m_formats.rgb() == XCB_NONE
        || m_formats.ofVisual(m_connection->screen().root_visual).format == XCB_NONE)
        return Error{.message = QStringLiteral("the screen has pixels of an unknown kind")};
    return std::nullopt;
}

std::optional<Error> Server::findMissingExtension()
{
    auto* const xcb = m_connection->xcb();
    struct Needed {
        const char* name;
        xcb_extension_t* extension;
    };
    for (const auto& needed :
        {Needed{"Composite", &xcb_composite_id}, Needed{"RENDER", &xcb_render_id},
            Needed{"SHAPE", &xcb_shape_id}, Needed{"XFIXES", &xcb_xfixes_id}})
        if (!isPresent(*m_connection, needed.extension))
            return missing(needed.name);

    // Some extensions refuse what a client uses without having told the version that it knows.
    const auto composite = m_connection->reply<xcb_composite_query_version_reply_t>(
        xcb_composite_query_version(xcb, 0, 4));
    if (!composite || (composite->major_version == 0 && composite->minor_version < 2))
        return missing("Composite 0.2");
    const auto fixes =
        m_connection->reply<xcb_xfixes_query_version_reply_t>(xcb_xfixes_query_version(xcb, 5, 0));
    if (!fixes || fixes->major_version < 2)
        return missing("XFIXES 2");
    const auto render =
        m_connection->reply<xcb_render_query_version_reply_t>(xcb_render_query_version(xcb, 0, 11));
    if (!render)
        return missing("RENDER");
    return std::nullopt;
}

PixelTransport Server::pixelTransport()
{
    if (!isPresent(*m_connection, &xcb_shm_id))
        return {};
    const auto version = m_connection->reply<xcb_shm_query_version_reply_t>(
        xcb_shm_query_version(m_connection->xcb()));
    // Memory by file descriptor came with 1.2. A server far away has the extension as well, but
    // there every attempt to attach memory fails.
    if (!version || version->major_version < 1
        || (version->major_version == 1 && version->minor_version < 2))
        return {};
    return {.hasSharedMemory = true, .drawsIntoSharedMemory = version->shared_pixmaps != 0};
}

} // namespace Platform::X11
