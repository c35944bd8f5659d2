#pragma once

#include <QSize>

#include <xcb/shm.h>

namespace Lumenote::Bench {

/// What a program does to get the screen's pixels by the plainest means there is: XShmGetImage of
/// the root into memory shared with the server.
class Baseline {
public:
    explicit Baseline(QSize size);
    ~Baseline();
    Baseline(const Baseline&) = delete;
    Baseline& operator=(const Baseline&) = delete;

    void attach(); ///< New memory, which the server sees.
    void detach();
    bool getImage(); ///< Into that memory.

private:
    QSize m_size;
    xcb_connection_t* m_xcb;
    xcb_window_t m_root;
    xcb_shm_seg_t m_segment = XCB_NONE;
    void* m_memory = nullptr;
};

} // namespace Lumenote::Bench
