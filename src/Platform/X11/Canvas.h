#pragma once

#include "Platform/X11/Connection.h"
#include "Platform/X11/PictureFormats.h"
#include "Platform/X11/SharedMemory.h"

#include <QImage>

#include <xcb/render.h>

#include <optional>
#include <vector>

namespace Platform::X11 {

using Pixmap = Resource<xcb_free_pixmap>;
using Picture = Resource<xcb_render_free_picture>;

/// What a server offers to get pixels out of it.
struct PixelTransport {
    bool hasSharedMemory = false;
    bool drawsIntoSharedMemory = false; ///< Pixmaps may lie in it, as they do without a GPU.
};

/// Pixels on the X server to draw on, 32 bits each with alpha, which then become an image. Drawing
/// converts from whatever depth the windows have, and sets the alpha of those that have none: for
/// nothing, in the same pass over the memory that a mere copy would take.
class Canvas {
public:
    Canvas(Connection& connection, const PictureFormats& formats,
        std::shared_ptr<SharedMemoryPool> pool, PixelTransport transport);
    ~Canvas();
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    enum class Filling { undefined, black, transparent };

    /// To be called once, before anything else. May wait for the server.
    void create(QSize size, Filling filling);

    QSize size() const { return m_size; }

    /// Without this request there is no image: it fails if @p cookie, of a checked request, does.
    void require(xcb_void_cookie_t cookie) { m_required.push_back(cookie); }
    xcb_render_picture_t picture() const { return m_picture->id(); }

    /// Makes the server copy the pixels, if it has to, without waiting for it. Nothing is drawn
    /// after this.
    void requestImage();

    /// Waits for all that was requested.
    Result<QImage> image(QImage::Format format);

private:
    bool drawsIntoMemory() const { return m_memory && m_transport.drawsIntoSharedMemory; }
    void createPixmap();
    void fill(Filling filling);
    bool haveRequiredSucceeded();

    Connection& m_connection;
    const PictureFormats& m_formats;
    std::shared_ptr<SharedMemoryPool> m_pool;
    PixelTransport m_transport;
    QSize m_size;
    std::unique_ptr<SharedMemory> m_memory;
    std::optional<Pixmap> m_pixmap;
    std::optional<Picture> m_picture;
    std::vector<xcb_void_cookie_t> m_required;
    struct Request {
        unsigned int sequence;
    };
    std::optional<Request> m_lastRequest; ///< The one that brings the pixels, if any has to.
};

} // namespace Platform::X11
