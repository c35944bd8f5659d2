#pragma once

#include "Stopwatch.h"

#include <QPoint>

#include <xcb/xcb.h>

namespace Lumenote::Bench {

/// Looks at one pixel of the screen that DISPLAY names.
class Eye {
public:
    Eye();
    ~Eye();
    Eye(const Eye&) = delete;
    Eye& operator=(const Eye&) = delete;

    std::uint32_t color() const;

    /// Looks every tenth of a millisecond. When it was first seen in another colour than @p color.
    Clock::time_point waitForOtherThan(std::uint32_t color) const;
    void waitFor(std::uint32_t color) const;

private:
    Clock::time_point waitUntil(bool isThatColor, std::uint32_t color) const;

    xcb_connection_t* m_xcb;
    xcb_window_t m_root;
};

} // namespace Lumenote::Bench
