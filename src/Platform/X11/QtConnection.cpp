#include "Platform/X11/QtConnection.h"

#include "Platform/X11/XcbTypes.h"

#include <QGuiApplication>
#include <QHash>
#include <QWindow>
#include <QtGui/qguiapplication_platform.h>

#include <xcb/xcb.h>

#include <cmath>
#include <cstring>

namespace Platform::X11::QtConnection {

xcb_connection_t* get()
{
    auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 != nullptr ? x11->connection() : nullptr;
}

xcb_window_t root()
{
    return xcb_setup_roots_iterator(xcb_get_setup(get())).data->root;
}

xcb_atom_t atom(const char* name)
{
    static QHash<QByteArray, xcb_atom_t> known;
    const auto found = known.constFind(name);
    if (found != known.cend())
        return *found;
    const auto cookie =
        xcb_intern_atom(get(), 0, static_cast<std::uint16_t>(std::strlen(name)), name);
    const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(get(), cookie, nullptr));
    return known[name] = reply ? reply->atom : XCB_NONE;
}

void setProperty(
    const QWindow& window, const char* name, xcb_atom_t type, std::span<const std::uint32_t> items)
{
    xcb_change_property(get(), XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window.winId()),
        atom(name), type, 32, static_cast<std::uint32_t>(items.size()), items.data());
}

QRect toPixels(const QRect& rect, double devicePixelRatio)
{
    const auto down = [=](int value) {
        return static_cast<int>(std::floor(value * devicePixelRatio));
    };
    const auto up = [=](int value) {
        return static_cast<int>(std::ceil(value * devicePixelRatio));
    };
    return {QPoint(down(rect.left()), down(rect.top())),
        QPoint(up(rect.right() + 1) - 1, up(rect.bottom() + 1) - 1)};
}

void flush()
{
    xcb_flush(get());
}

} // namespace Platform::X11::QtConnection
