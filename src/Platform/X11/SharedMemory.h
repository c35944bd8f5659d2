#pragma once

#include "Platform/X11/Connection.h"
#include "Platform/X11/EventFile.h"

#include <QImage>

#include <xcb/shm.h>

#include <chrono>
#include <cstddef>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace Platform::X11 {

/// Memory that this program and the X server both see.
class SharedMemory {
public:
    /// Attached to the server; null where the system gives none or the server refuses.
    static std::unique_ptr<SharedMemory> make(Connection& connection, std::size_t size);

    ~SharedMemory();
    SharedMemory(const SharedMemory&) = delete;
    SharedMemory& operator=(const SharedMemory&) = delete;

    std::size_t size() const { return m_size; }
    unsigned char* bytes() const { return m_bytes; }
    xcb_shm_seg_t id() const { return m_id; }

    void detach(const Connection& connection) const { xcb_shm_detach(connection.xcb(), m_id); }

private:
    SharedMemory(unsigned char* bytes, std::size_t size, xcb_shm_seg_t id);

    unsigned char* m_bytes;
    std::size_t m_size;
    xcb_shm_seg_t m_id;
};

/// Lends memory to images, without a copy, for as long as they live. The last that came back is
/// kept for a while, since the pages of fresh memory cost several times as much as to fill them.
class SharedMemoryPool : public std::enable_shared_from_this<SharedMemoryPool> {
public:
    using Time = std::chrono::steady_clock::time_point;

    /// Raises @p onReturn when memory has come back.
    explicit SharedMemoryPool(std::shared_ptr<const EventFile> onReturn);

    /// Memory of at least @p size, null where there is none. The connection's thread.
    std::unique_ptr<SharedMemory> take(Connection& connection, std::size_t size);

    /// The image on top of @p memory, which comes back with its last copy, in whatever thread.
    QImage lend(std::unique_ptr<SharedMemory> memory, QSize size, QImage::Format format);

    /// Frees what came back, but for a spare that isn't too old, and tells when that one will be.
    /// The connection's thread.
    std::optional<Time> tidy(const Connection& connection, Time now);

private:
    struct Returned {
        std::unique_ptr<SharedMemory> memory;
        Time when;
    };
    struct Loan;

    void giveBack(std::unique_ptr<SharedMemory> memory);

    std::shared_ptr<const EventFile> m_onReturn;
    std::mutex m_lock;
    std::vector<Returned> m_returned; ///< The last came last.
};

} // namespace Platform::X11
