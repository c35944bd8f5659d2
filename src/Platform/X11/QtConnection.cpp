#include "Platform/X11/QtConnection.h"

#include "Platform/X11/XcbTypes.h"

#include <QGuiApplication>
#include <QHash>
#include <QtGui/qguiapplication_platform.h>

#include <xcb/xcb.h>

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

void flush()
{
    xcb_flush(get());
}

} // namespace Platform::X11::QtConnection
