#pragma once

#include "Platform/X11/Canvas.h"
#include "Platform/X11/Connection.h"
#include "Platform/X11/PictureFormats.h"
#include "Platform/X11/SharedMemory.h"

#include <memory>

namespace Platform::X11 {

/// What work on the X server stands on. One thread only.
class Server {
public:
    /// Learns what the server can do, and redirects all windows into pixmaps of their own for as
    /// long as the connection lives: a window that has none yet when another is already on top of
    /// it would show pixels of that one. So this is to be called before this program shows any.
    Server(std::unique_ptr<Connection> connection, std::shared_ptr<const EventFile> onReturn);

    Connection& connection() { return *m_connection; }
    const PictureFormats& formats() const { return m_formats; }
    SharedMemoryPool& pool() { return *m_pool; }
    Canvas canvas() { return {*m_connection, m_formats, m_pool, m_transport}; }

    /// Why nothing can be captured here, if so: permissionDenied to clients that the server doesn't
    /// trust, failed where it lacks an extension.
    const std::optional<Error>& obstacle() const { return m_obstacle; }

private:
    std::optional<Error> findObstacle();
    std::optional<Error> findMissingExtension();
    PixelTransport pixelTransport();

    std::unique_ptr<Connection> m_connection;
    std::shared_ptr<SharedMemoryPool> m_pool;
    PictureFormats m_formats;
    PixelTransport m_transport;
    std::optional<Error> m_obstacle;
};

} // namespace Platform::X11
