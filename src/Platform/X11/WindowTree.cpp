#include "Platform/X11/WindowTree.h"

#include <xcb/shape.h>

#include <algorithm>
#include <utility>

namespace Platform::X11 {

namespace {

/// Window managers nest a client two or three deep; a tree that has no end is none.
constexpr int deepest = 16;

struct TopLevelRequests {
    xcb_window_t id;
    xcb_get_window_attributes_cookie_t attributes;
    xcb_get_geometry_cookie_t geometry;
    xcb_shape_query_extents_cookie_t shape;
};

} // namespace

std::vector<xcb_window_t> rootChildren(Connection& connection)
{
    const auto tree = connection.reply<xcb_query_tree_reply_t>(
        xcb_query_tree(connection.xcb(), connection.root()));
    if (!tree)
        return {};
    const auto* const children = xcb_query_tree_children(tree.get());
    std::vector<xcb_window_t> ids(children, children + xcb_query_tree_children_length(tree.get()));
    std::ranges::reverse(ids);
    return ids;
}

std::vector<TopLevel> topLevels(Connection& connection, const std::vector<xcb_window_t>& ids)
{
    std::vector<TopLevelRequests> requests;
    requests.reserve(ids.size());
    for (const auto id : ids)
        requests.push_back({id, xcb_get_window_attributes(connection.xcb(), id),
            xcb_get_geometry(connection.xcb(), id), xcb_shape_query_extents(connection.xcb(), id)});

    std::vector<TopLevel> windows;
    windows.reserve(ids.size());
    for (const auto& request : requests) {
        const auto attributes =
            connection.reply<xcb_get_window_attributes_reply_t>(request.attributes);
        const auto geometry = connection.reply<xcb_get_geometry_reply_t>(request.geometry);
        const auto shape = connection.reply<xcb_shape_query_extents_reply_t>(request.shape);
        if (!attributes || !geometry)
            continue;
        const int borders = 2 * geometry->border_width;
        windows.push_back({.id = request.id,
            .rect = {geometry->x, geometry->y, geometry->width + borders,
                geometry->height + borders},
            .borderWidth = geometry->border_width,
            .visual = attributes->visual,
            .hasPixels = attributes->map_state == XCB_MAP_STATE_VIEWABLE
                && attributes->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT,
            .isUnmanaged = attributes->override_redirect != 0,
            .isShaped = shape && shape->bounding_shaped != 0});
    }
    return windows;
}

std::map<xcb_window_t, xcb_window_t> framesOf(
    Connection& connection, const std::vector<xcb_window_t>& windows)
{
    struct Step {
        xcb_window_t window; ///< Whose frame is looked for.
        xcb_window_t ancestor;
        xcb_query_tree_cookie_t request;
    };
    const auto up = [&connection](xcb_window_t window, xcb_window_t ancestor) {
        return Step{window, ancestor, xcb_query_tree(connection.xcb(), ancestor)};
    };

    std::vector<Step> steps;
    steps.reserve(windows.size());
    for (const auto window : windows)
        steps.push_back(up(window, window));
    std::map<xcb_window_t, xcb_window_t> frames;
    for (int level = 0; level < deepest && !steps.empty(); ++level)
        for (const auto& step : std::exchange(steps, {})) {
            const auto tree = connection.reply<xcb_query_tree_reply_t>(step.request);
            if (!tree)
                continue;
            if (tree->parent == connection.root())
                frames[step.window] = step.ancestor;
            else if (tree->parent != XCB_NONE)
                steps.push_back(up(step.window, tree->parent));
        }
    return frames;
}

} // namespace Platform::X11
