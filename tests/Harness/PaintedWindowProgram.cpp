// Shows one window with a pattern, tells its id once it is painted, and keeps it painted.
//
//   painted-window x y width height color [option value]…
//
// The colour is hexadecimal. Options: name (UTF-8), latin-name, class (both names of WM_CLASS),
// type and state (the last part of an EWMH atom), border (pixels), shadow (its own, on all sides),
// alpha (hexadecimal, of a visual that has it), picture (a file that is shown instead of a
// pattern), and, of any value, plain (one colour), frameless and unmanaged.

#include "Harness/PaintedWindow.h"

#include <QImage>

#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

constexpr int rowsAtOnce = 16; // What one request surely has room for.
constexpr std::uint8_t patternDepth = 24;
constexpr std::uint8_t alphaDepth = 32;

std::string toLatin1(const std::string& utf8)
{
    std::string latin;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto byte = static_cast<unsigned char>(utf8[i]);
        const bool isPair = byte >= 0xc2 && i + 1 < utf8.size();
        latin += isPair ? static_cast<char>((byte << 6) | (utf8[++i] & 0x3f)) : utf8[i];
    }
    return latin;
}

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

class Program {
public:
    Program(const char* const* numbers, std::map<std::string, std::string> options);
    int run();

private:
    bool has(const char* option) const { return m_options.contains(option); }
    std::uint32_t number(const char* option, int base) const;
    xcb_atom_t atom(const std::string& name) const;
    xcb_visualid_t alphaVisual() const;
    void create();
    void setText(xcb_atom_t property, xcb_atom_t type, const std::string& text) const;
    void setItems(
        const char* property, xcb_atom_t type, const std::vector<std::uint32_t>& items) const;
    void describe() const;
    std::uint32_t pixel(int x, int y) const;
    void paint() const;

    std::map<std::string, std::string> m_options;
    std::array<int, 4> m_rect{};
    std::uint32_t m_color;
    QImage m_picture;
    xcb_connection_t* m_xcb;
    xcb_screen_t* m_screen;
    xcb_window_t m_window;
    xcb_gcontext_t m_context;
};

Program::Program(const char* const* numbers, std::map<std::string, std::string> options)
    : m_options(std::move(options))
    , m_color(static_cast<std::uint32_t>(std::strtoul(numbers[4], nullptr, 16)))
    , m_xcb(xcb_connect(nullptr, nullptr))
    , m_screen(xcb_setup_roots_iterator(xcb_get_setup(m_xcb)).data)
    , m_window(xcb_generate_id(m_xcb))
    , m_context(xcb_generate_id(m_xcb))
{
    if (has("picture"))
        m_picture.load(QString::fromStdString(m_options.at("picture")));
    for (std::size_t i = 0; i < m_rect.size(); ++i)
        m_rect.at(i) = std::atoi(numbers[i]);
}

std::uint32_t Program::number(const char* option, int base) const
{
    return has(option)
        ? static_cast<std::uint32_t>(std::strtoul(m_options.at(option).c_str(), nullptr, base))
        : 0;
}

xcb_atom_t Program::atom(const std::string& name) const
{
    const std::unique_ptr<xcb_intern_atom_reply_t, Free> reply(xcb_intern_atom_reply(m_xcb,
        xcb_intern_atom(m_xcb, 0, static_cast<std::uint16_t>(name.size()), name.c_str()), nullptr));
    return reply->atom;
}

xcb_visualid_t Program::alphaVisual() const
{
    for (auto depth = xcb_screen_allowed_depths_iterator(m_screen); depth.rem > 0;
         xcb_depth_next(&depth))
        if (depth.data->depth == alphaDepth)
            return xcb_depth_visuals(depth.data)->visual_id;
    return XCB_NONE;
}

void Program::create()
{
    const auto depth = has("alpha") ? alphaDepth : patternDepth;
    const auto visual = has("alpha") ? alphaVisual() : m_screen->root_visual;
    const auto colormap = xcb_generate_id(m_xcb);
    xcb_create_colormap(m_xcb, XCB_COLORMAP_ALLOC_NONE, colormap, m_screen->root, visual);
    // Without a background of its own: what it shows is what it has painted, and nothing else.
    const std::array<std::uint32_t, 4> attributes{
        0, has("unmanaged") ? 1U : 0U, XCB_EVENT_MASK_EXPOSURE, colormap};
    xcb_create_window(m_xcb, depth, m_window, m_screen->root, static_cast<std::int16_t>(m_rect[0]),
        static_cast<std::int16_t>(m_rect[1]), static_cast<std::uint16_t>(m_rect[2]),
        static_cast<std::uint16_t>(m_rect[3]), static_cast<std::uint16_t>(number("border", 10)),
        XCB_WINDOW_CLASS_INPUT_OUTPUT, visual,
        XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP,
        attributes.data());
    xcb_create_gc(m_xcb, m_context, m_window, 0, nullptr);
}

void Program::setText(xcb_atom_t property, xcb_atom_t type, const std::string& text) const
{
    xcb_change_property(m_xcb, XCB_PROP_MODE_REPLACE, m_window, property, type, 8,
        static_cast<std::uint32_t>(text.size()), text.data());
}

void Program::setItems(
    const char* property, xcb_atom_t type, const std::vector<std::uint32_t>& items) const
{
    xcb_change_property(m_xcb, XCB_PROP_MODE_REPLACE, m_window, atom(property), type, 32,
        static_cast<std::uint32_t>(items.size()), items.data());
}

void Program::describe() const
{
    if (has("name"))
        setText(atom("_NET_WM_NAME"), atom("UTF8_STRING"), m_options.at("name"));
    if (has("latin-name"))
        setText(XCB_ATOM_WM_NAME, XCB_ATOM_STRING, toLatin1(m_options.at("latin-name")));
    if (has("class"))
        setText(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING,
            m_options.at("class") + '\0' + m_options.at("class") + '\0');
    if (has("type"))
        setItems("_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM,
            {atom("_NET_WM_WINDOW_TYPE_" + m_options.at("type"))});
    if (has("state"))
        setItems("_NET_WM_STATE", XCB_ATOM_ATOM, {atom("_NET_WM_STATE_" + m_options.at("state"))});
    if (has("shadow"))
        setItems("_GTK_FRAME_EXTENTS", XCB_ATOM_CARDINAL,
            std::vector<std::uint32_t>(4, number("shadow", 10)));
    if (has("frameless"))
        setItems("_MOTIF_WM_HINTS", atom("_MOTIF_WM_HINTS"), {2, 0, 0, 0, 0});
    setItems("_NET_WM_PID", XCB_ATOM_CARDINAL, {static_cast<std::uint32_t>(getpid())});
    // So that a window manager doesn't choose a place: position and size by the user.
    std::vector<std::uint32_t> hints(18, 0);
    hints[0] = 3;
    xcb_change_property(m_xcb, XCB_PROP_MODE_REPLACE, m_window, XCB_ATOM_WM_NORMAL_HINTS,
        XCB_ATOM_WM_SIZE_HINTS, 32, static_cast<std::uint32_t>(hints.size()), hints.data());
}

std::uint32_t Program::pixel(int x, int y) const
{
    if (m_picture.valid(x, y))
        return m_picture.pixel(x, y);
    return has("plain") || has("alpha") ? (number("alpha", 16) << 24) | m_color
                                        : Harness::patternPixel(m_color, x, y);
}

void Program::paint() const
{
    const auto width = m_rect[2];
    const auto depth = has("alpha") ? alphaDepth : patternDepth;
    for (int top = 0; top < m_rect[3]; top += rowsAtOnce) {
        const int rows = std::min(rowsAtOnce, m_rect[3] - top);
        std::vector<std::uint32_t> pixels;
        for (int y = top; y < top + rows; ++y)
            for (int x = 0; x < width; ++x)
                pixels.push_back(pixel(x, y));
        xcb_put_image(m_xcb, XCB_IMAGE_FORMAT_Z_PIXMAP, m_window, m_context,
            static_cast<std::uint16_t>(width), static_cast<std::uint16_t>(rows), 0,
            static_cast<std::int16_t>(top), 0, depth,
            static_cast<std::uint32_t>(pixels.size() * sizeof(pixels[0])),
            reinterpret_cast<const std::uint8_t*>(pixels.data()));
    }
}

int Program::run()
{
    create();
    describe();
    xcb_map_window(m_xcb, m_window);
    xcb_flush(m_xcb);
    bool hasTold = false;
    while (const std::unique_ptr<xcb_generic_event_t, Free> event{xcb_wait_for_event(m_xcb)}) {
        if ((event->response_type & 0x7f) != XCB_EXPOSE)
            continue;
        paint();
        std::free(xcb_get_input_focus_reply(m_xcb, xcb_get_input_focus(m_xcb), nullptr));
        if (!hasTold)
            static_cast<void>(std::printf("%u\n", m_window));
        static_cast<void>(std::fflush(stdout));
        hasTold = true;
    }
    return 1;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 6)
        return 64;
    std::map<std::string, std::string> options;
    for (int i = 6; i + 1 < argc; i += 2)
        options[argv[i]] = argv[i + 1];
    return Program(argv + 1, std::move(options)).run();
}
