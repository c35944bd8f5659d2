#include "Platform/X11/WindowList.h"

#include "Platform/X11/Properties.h"

#include <QByteArrayList>

#include <algorithm>
#include <map>

namespace Platform::X11 {

namespace {

constexpr int desktopLayer = -1;
constexpr int floatingLayer = 3;
constexpr int dockLayer = 20;

/// The corner of a window, its size, and the shadow in it.
struct ContentRequest {
    ContentRequest(const Connection& connection, xcb_window_t window)
        : corner(xcb_translate_coordinates(connection.xcb(), window, connection.root(), 0, 0))
        , geometry(xcb_get_geometry(connection.xcb(), window))
        , extents(connection, window, connection.atoms().frameExtents)
    {
    }

    QRect answer(Connection& connection) const
    {
        const auto from = connection.reply<xcb_translate_coordinates_reply_t>(corner);
        const auto size = connection.reply<xcb_get_geometry_reply_t>(geometry);
        const auto shadow = items(extents.answer(connection).get());
        if (!from || !size)
            return {};
        const QRect all(from->dst_x, from->dst_y, size->width, size->height);
        if (shadow.size() != 4)
            return all;
        const auto side = [&shadow](std::size_t index) { return static_cast<int>(shadow[index]); };
        const auto content = all.adjusted(side(0), side(2), -side(1), -side(3));
        return content.isValid() && all.contains(content) ? content : all;
    }

    xcb_translate_coordinates_cookie_t corner;
    xcb_get_geometry_cookie_t geometry;
    PropertyRequest extents;
};

struct ClientRequest {
    ClientRequest(const Connection& connection, xcb_window_t client, xcb_window_t frame)
        : client(client)
        , frame(frame)
        , content(connection, client)
        , visibleName(connection, client, connection.atoms().visibleName)
        , name(connection, client, XCB_ATOM_WM_NAME)
        , wmClass(connection, client, XCB_ATOM_WM_CLASS)
        , processID(connection, client, connection.atoms().processID)
        , type(connection, client, connection.atoms().type)
        , state(connection, client, connection.atoms().state)
    {
    }

    xcb_window_t client;
    xcb_window_t frame;
    ContentRequest content;
    PropertyRequest visibleName;
    PropertyRequest name;
    PropertyRequest wmClass;
    PropertyRequest processID;
    PropertyRequest type;
    PropertyRequest state;
};

bool holds(const std::vector<std::uint32_t>& items, xcb_atom_t item)
{
    return std::ranges::find(items, item) != items.end();
}

int layerOf(const std::vector<std::uint32_t>& types, const std::vector<std::uint32_t>& states,
    const Atoms& atoms)
{
    // A window names its types in the order in which it would like to be taken for them.
    for (const auto type : types) {
        if (type == atoms.typeDesktop)
            return desktopLayer;
        if (type == atoms.typeDock)
            return dockLayer;
        if (type == atoms.typeNormal || type == atoms.typeDialog)
            break;
        return floatingLayer;
    }
    return holds(states, atoms.stateAbove) ? floatingLayer : 0;
}

/// Nothing where the window is gone, or minimised and merely kept for its preview.
std::optional<ClientWindow> answerOf(Connection& connection, const ClientRequest& request)
{
    const auto& atoms = connection.atoms();
    ClientWindow window;
    window.id = request.client;
    window.frame = request.frame;
    window.content = request.content.answer(connection);
    window.title = text(request.visibleName.answer(connection).get(), atoms);
    const auto name = text(request.name.answer(connection).get(), atoms);
    if (window.title.isEmpty())
        window.title = name;
    const auto classes = bytes(request.wmClass.answer(connection).get()).split('\0');
    window.instanceName = QString::fromUtf8(classes.value(0));
    window.className = QString::fromUtf8(classes.value(1));
    if (const auto ids = items(request.processID.answer(connection).get()); !ids.empty())
        window.processID = ids.front();
    const auto types = items(request.type.answer(connection).get());
    const auto states = items(request.state.answer(connection).get());
    window.layer = layerOf(types, states, atoms);
    if (window.content.isEmpty() || holds(states, atoms.stateHidden))
        return std::nullopt;
    return window;
}

/// The client in each frame that has one. Those that a window manager doesn't list stand for
/// themselves: all of them where there is none.
std::map<xcb_window_t, xcb_window_t> clientsByFrame(Connection& connection)
{
    const PropertyRequest list(connection, connection.root(), connection.atoms().clientList);
    const auto clients = items(list.answer(connection).get());
    std::map<xcb_window_t, xcb_window_t> byFrame;
    for (const auto& [client, frame] : framesOf(connection, clients))
        byFrame[frame] = client;
    return byFrame;
}

} // namespace

Result<std::vector<ClientWindow>> clientWindows(Connection& connection)
{
    const auto clients = clientsByFrame(connection);
    const auto frames = topLevels(connection, rootChildren(connection));
    if (frames.empty() && !connection.finish())
        return tl::make_unexpected(connection.failure(QStringLiteral("listing windows")));

    std::vector<ClientRequest> requests;
    requests.reserve(frames.size());
    for (const auto& frame : frames) {
        const auto client = clients.find(frame.id);
        const bool isListed = client != clients.end();
        if (frame.hasPixels && (isListed || !frame.isUnmanaged))
            requests.emplace_back(connection, isListed ? client->second : frame.id, frame.id);
    }
    std::vector<ClientWindow> windows;
    for (const auto& request : requests)
        if (auto window = answerOf(connection, request))
            windows.push_back(*std::move(window));
    return windows;
}

QRect contentOf(Connection& connection, xcb_window_t client)
{
    return ContentRequest(connection, client).answer(connection);
}

} // namespace Platform::X11
