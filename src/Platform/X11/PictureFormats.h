#pragma once

#include <xcb/render.h>

#include <unordered_map>

namespace Platform::X11 {

/// How the Render extension calls the layouts of pixels that the server has.
class PictureFormats {
public:
    PictureFormats() = default;
    PictureFormats(const xcb_render_query_pict_formats_reply_t* reply, int screenNumber);

    struct OfVisual {
        xcb_render_pictformat_t format = XCB_NONE; ///< None where Render doesn't know the visual.
        bool hasAlpha = false;
    };
    OfVisual ofVisual(xcb_visualid_t visual) const;

    /// 32 bits a pixel as in a QImage: with alpha, and with those bits left alone.
    xcb_render_pictformat_t argb() const { return m_argb; }
    xcb_render_pictformat_t rgb() const { return m_rgb; }

private:
    std::unordered_map<xcb_visualid_t, OfVisual> m_visuals;
    xcb_render_pictformat_t m_argb = XCB_NONE;
    xcb_render_pictformat_t m_rgb = XCB_NONE;
};

} // namespace Platform::X11
