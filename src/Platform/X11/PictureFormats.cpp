#include "Platform/X11/PictureFormats.h"

namespace Platform::X11 {

namespace {

/// Whether @p format has 32 bits with the colours where QImage::Format_ARGB32 has them.
bool isLaidOutAsImage(const xcb_render_pictforminfo_t& format)
{
    const auto& direct = format.direct;
    return format.type == XCB_RENDER_PICT_TYPE_DIRECT && format.depth == 32
        && direct.red_mask == 0xff && direct.red_shift == 16 && direct.green_mask == 0xff
        && direct.green_shift == 8 && direct.blue_mask == 0xff && direct.blue_shift == 0;
}

} // namespace

PictureFormats::PictureFormats(const xcb_render_query_pict_formats_reply_t* reply, int screenNumber)
{
    std::unordered_map<xcb_render_pictformat_t, bool> hasAlpha;
    for (auto it = xcb_render_query_pict_formats_formats_iterator(reply); it.rem > 0;
         xcb_render_pictforminfo_next(&it)) {
        const auto& format = *it.data;
        hasAlpha[format.id] = format.direct.alpha_mask != 0;
        if (!isLaidOutAsImage(format))
            continue;
        if (format.direct.alpha_mask == 0)
            m_rgb = format.id;
        else if (format.direct.alpha_mask == 0xff && format.direct.alpha_shift == 24)
            m_argb = format.id;
    }

    auto screen = xcb_render_query_pict_formats_screens_iterator(reply);
    for (; screenNumber > 0 && screen.rem > 1; --screenNumber)
        xcb_render_pictscreen_next(&screen);
    if (screen.rem == 0)
        return;
    for (auto depth = xcb_render_pictscreen_depths_iterator(screen.data); depth.rem > 0;
         xcb_render_pictdepth_next(&depth))
        for (auto visual = xcb_render_pictdepth_visuals_iterator(depth.data); visual.rem > 0;
             xcb_render_pictvisual_next(&visual))
            m_visuals[visual.data->visual] = {
                .format = visual.data->format, .hasAlpha = hasAlpha[visual.data->format]};
}

PictureFormats::OfVisual PictureFormats::ofVisual(xcb_visualid_t visual) const
{
    const auto found = m_visuals.find(visual);
    return found == m_visuals.end() ? OfVisual() : found->second;
}

} // namespace Platform::X11
