#include "linux/x11/WindowStack.h"

#include <algorithm>
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
    xcb_window_t sibling = XCB_NONE;
    for (auto entry = windows.rbegin(); entry != windows.rend(); ++entry) {
        if (sibling == XCB_NONE) {
            const std::uint32_t values[] = {XCB_STACK_MODE_ABOVE};
            xcb_configure_window(
                connection.get(), entry->window, XCB_CONFIG_WINDOW_STACK_MODE, values
            );
        } else {
            const std::uint32_t values[] = {sibling, XCB_STACK_MODE_BELOW};
            xcb_configure_window(
                connection.get(),
                entry->window,
                XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE,
                values
            );
        }
        sibling = entry->window;
    }
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
