#include "RootWindow.h"

#include <xcb/res.h>
#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
template <typename T>
using Owned = std::unique_ptr<T, Free>;

const xcb_screen_t& screenOf(xcb_connection_t* xcb)
{
    return *xcb_setup_roots_iterator(xcb_get_setup(xcb)).data;
}

int resources(xcb_connection_t* xcb, std::uint32_t client)
{
    const Owned<xcb_res_query_client_resources_reply_t> reply(xcb_res_query_client_resources_reply(
        xcb, xcb_res_query_client_resources(xcb, client), nullptr));
    if (!reply)
        return 0;
    int sum = 0;
    const auto* const types = xcb_res_query_client_resources_types(reply.get());
    for (int i = 0; i < xcb_res_query_client_resources_types_length(reply.get()); ++i)
        sum += static_cast<int>(types[i].count);
    return sum;
}

} // namespace

RootWindow::RootWindow()
    : m_xcb(xcb_connect(nullptr, nullptr))
    , m_root(screenOf(m_xcb).root)
{
}

RootWindow::~RootWindow()
{
    xcb_disconnect(m_xcb);
}

QRect RootWindow::rect() const
{
    const auto& screen = screenOf(m_xcb);
    return {0, 0, screen.width_in_pixels, screen.height_in_pixels};
}

QImage RootWindow::picture() const
{
    const auto& screen = screenOf(m_xcb);
    const Owned<xcb_get_image_reply_t> reply(xcb_get_image_reply(m_xcb,
        xcb_get_image(m_xcb, XCB_IMAGE_FORMAT_Z_PIXMAP, m_root, 0, 0, screen.width_in_pixels,
            screen.height_in_pixels, ~0U),
        nullptr));
    if (!reply)
        return {};
    return QImage(xcb_get_image_data(reply.get()), screen.width_in_pixels, screen.height_in_pixels,
        QImage::Format_RGB32)
        .copy();
}

std::uint32_t RootWindow::focus() const
{
    const Owned<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(m_xcb, xcb_get_input_focus(m_xcb), nullptr));
    return reply ? reply->focus : XCB_NONE;
}

void RootWindow::setFocus(std::uint32_t window) const
{
    xcb_set_input_focus(m_xcb, XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
    static_cast<void>(focus()); // Until the server has done so.
}

void RootWindow::lower(std::uint32_t window) const
{
    const std::uint32_t below = XCB_STACK_MODE_BELOW;
    xcb_configure_window(m_xcb, window, XCB_CONFIG_WINDOW_STACK_MODE, &below);
    static_cast<void>(focus());
}

bool RootWindow::grabKeyboard() const
{
    const Owned<xcb_grab_keyboard_reply_t> reply(xcb_grab_keyboard_reply(m_xcb,
        xcb_grab_keyboard(
            m_xcb, 1, m_root, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
        nullptr));
    return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

void RootWindow::ungrabKeyboard() const
{
    xcb_ungrab_keyboard(m_xcb, XCB_CURRENT_TIME);
    static_cast<void>(focus());
}

int RootWindow::resourcesOf(qint64 processID) const
{
    xcb_res_client_id_spec_t all{.client = 0, .mask = XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const Owned<xcb_res_query_client_ids_reply_t> reply(
        xcb_res_query_client_ids_reply(m_xcb, xcb_res_query_client_ids(m_xcb, 1, &all), nullptr));
    if (!reply)
        return -1;
    int sum = 0;
    for (auto ids = xcb_res_query_client_ids_ids_iterator(reply.get()); ids.rem > 0;
         xcb_res_client_id_value_next(&ids))
        if (xcb_res_client_id_value_value_length(ids.data) > 0
            && *xcb_res_client_id_value_value(ids.data) == processID)
            sum += resources(m_xcb, ids.data->spec.client);
    return sum;
}
