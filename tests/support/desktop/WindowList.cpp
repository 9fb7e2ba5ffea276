#include "desktop/WindowList.h"

#include <algorithm>

namespace desktop {

std::vector<xcb_window_t> WindowList::managed()
{
    std::vector<xcb_window_t> listed = connection.property(connection.root(), "_NET_CLIENT_LIST");
    std::erase_if(listed, [this](xcb_window_t window) { return !exists(window); });
    return listed;
}

xcb_window_t WindowList::active()
{
    const auto values = connection.property(connection.root(), "_NET_ACTIVE_WINDOW");
    return values.empty() ? 0 : values.front();
}

pid_t WindowList::activeProcess()
{
    const xcb_window_t window = active();
    const auto values = connection.property(window, "_NET_WM_PID");
    return window == 0 || values.empty() ? 0 : static_cast<pid_t>(values.front());
}

xcb_window_t WindowList::focused()
{
    const Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection.get(), xcb_get_input_focus(connection.get()), nullptr)
    );
    return reply ? reply->focus : 0;
}

std::string WindowList::classOf(xcb_window_t window)
{
    // Two texts, each ended by a zero byte: the instance, then the class.
    const std::string both = connection.textProperty(window, "WM_CLASS");
    const auto end = both.find('\0');
    return end == std::string::npos ? "" : std::string(both.c_str() + end + 1);
}

xcb_window_t WindowList::ofClass(const std::string& windowClass)
{
    for (const xcb_window_t window : managed()) {
        if (classOf(window) == windowClass) {
            return window;
        }
    }
    return 0;
}

std::string WindowList::titleOf(xcb_window_t window)
{
    return connection.textProperty(window, "_NET_WM_NAME");
}

xcb_window_t WindowList::ofTitle(const std::string& title)
{
    const std::vector<xcb_window_t> all = managed();
    const auto found = std::find_if(all.rbegin(), all.rend(), [&](xcb_window_t window) {
        return titleOf(window) == title;
    });
    return found == all.rend() ? 0 : *found;
}

bool WindowList::exists(xcb_window_t window)
{
    const Reply<xcb_get_geometry_reply_t> reply(xcb_get_geometry_reply(
        connection.get(), xcb_get_geometry(connection.get(), window), nullptr
    ));
    return reply != nullptr;
}

bool WindowList::isViewable(xcb_window_t window)
{
    const Reply<xcb_get_window_attributes_reply_t> reply(xcb_get_window_attributes_reply(
        connection.get(), xcb_get_window_attributes(connection.get(), window), nullptr
    ));
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

Rectangle WindowList::placeOf(xcb_window_t window)
{
    const Reply<xcb_get_geometry_reply_t> size(xcb_get_geometry_reply(
        connection.get(), xcb_get_geometry(connection.get(), window), nullptr
    ));
    const Reply<xcb_translate_coordinates_reply_t> place(xcb_translate_coordinates_reply(
        connection.get(),
        xcb_translate_coordinates(connection.get(), window, connection.root(), 0, 0),
        nullptr
    ));
    if (!size || !place) {
        return {};
    }
    return {place->dst_x, place->dst_y, size->width, size->height};
}

std::vector<xcb_window_t> WindowList::viewableTopLevels()
{
    const Reply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(
        connection.get(), xcb_query_tree(connection.get(), connection.root()), nullptr
    ));
    if (!tree) {
        return {};
    }
    const xcb_window_t* children = xcb_query_tree_children(tree.get());
    std::vector<xcb_window_t> found(children, children + tree->children_len);
    std::erase_if(found, [this](xcb_window_t window) { return !isViewable(window); });
    return found;
}

} // namespace desktop
