#include "Eye.h"

#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <thread>

namespace Lumenote::Bench {

namespace {

using namespace std::chrono_literals;

constexpr auto interval = 100us;
constexpr auto patience = 20s;
constexpr std::int16_t x = 200; ///< Away from what overlays write on themselves.
constexpr std::int16_t y = 300;
constexpr std::uint32_t colorBits = 0xffffff;

} // namespace

Eye::Eye()
    : m_xcb(xcb_connect(nullptr, nullptr))
    , m_root(xcb_setup_roots_iterator(xcb_get_setup(m_xcb)).data->root)
{
    require(xcb_connection_has_error(m_xcb) == 0, "no X server to look at");
}

Eye::~Eye()
{
    xcb_disconnect(m_xcb);
}

std::uint32_t Eye::color() const
{
    const std::unique_ptr<xcb_get_image_reply_t, decltype(&std::free)> image(
        xcb_get_image_reply(m_xcb,
            xcb_get_image(m_xcb, XCB_IMAGE_FORMAT_Z_PIXMAP, m_root, x, y, 1, 1,
                std::numeric_limits<std::uint32_t>::max()),
            nullptr),
        &std::free);
    require(image != nullptr, "the screen can't be seen");
    std::uint32_t pixel = 0;
    std::memcpy(&pixel, xcb_get_image_data(image.get()), sizeof pixel);
    return pixel & colorBits;
}

Clock::time_point Eye::waitForOtherThan(std::uint32_t color) const
{
    return waitUntil(false, color);
}

void Eye::waitFor(std::uint32_t color) const
{
    waitUntil(true, color);
}

Clock::time_point Eye::waitUntil(bool isThatColor, std::uint32_t color) const
{
    const auto start = Clock::now();
    for (;;) {
        const bool isSeen = (this->color() == color) == isThatColor;
        const auto now = Clock::now();
        if (isSeen)
            return now;
        require(now - start < patience, "the screen never changed");
        std::this_thread::sleep_for(interval);
    }
}

} // namespace Lumenote::Bench
