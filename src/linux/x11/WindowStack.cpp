#include "linux/x11/WindowStack.h"

#include <algorithm>
#include <array>
#include <span>

namespace x11 {

void WindowStack::insert(xcb_window_t window, int level)
{
    remove(window);
    const auto above = std::find_if(windows.begin(), windows.end(), [&](const Entry& entry) {
        return entry.level > level;
    });
    windows.insert(above, {window, level});
}

void WindowStack::remove(xcb_window_t window)
{
    std::erase_if(windows, [&](const Entry& entry) { return entry.window == window; });
}

bool WindowStack::contains(xcb_window_t window) const
{
    return std::any_of(windows.begin(), windows.end(), [&](const Entry& entry) {
        return entry.window == window;
    });
}

void WindowStack::raise() const
{
    constexpr std::uint32_t ABOVE = XCB_STACK_MODE_ABOVE;
    xcb_window_t lowest = XCB_NONE;
    std::for_each(windows.rbegin(), windows.rend(), [&](const Entry& entry) {
        if (lowest == XCB_NONE) {
            xcb_configure_window(
                connection.get(), entry.window, XCB_CONFIG_WINDOW_STACK_MODE, &ABOVE
            );
        } else {
            const std::array<std::uint32_t, 2> below{lowest, XCB_STACK_MODE_BELOW};
            constexpr unsigned PLACE = XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE;
            xcb_configure_window(connection.get(), entry.window, PLACE, below.data());
        }
        lowest = entry.window;
    });
    connection.flush();
}

bool WindowStack::checkOnTop()
{
    const Reply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(
        connection.get(), xcb_query_tree(connection.get(), connection.root()), nullptr
    ));
    if (!tree) {
        return true; // nothing that raising could mend
    }
    const std::span<const xcb_window_t> children(
        xcb_query_tree_children(tree.get()),
        static_cast<std::size_t>(xcb_query_tree_children_length(tree.get()))
    );
    std::erase_if(windows, [&](const Entry& entry) {
        return std::find(children.begin(), children.end(), entry.window) == children.end();
    });
    const auto same = [](const Entry& entry, xcb_window_t child) { return entry.window == child; };
    return std::equal(windows.begin(), windows.end(), children.last(windows.size()).begin(), same);
}

} // namespace x11
