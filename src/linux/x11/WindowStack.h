// The lock's windows in the order in which they must lie above everything else on the desktop, the
// last one on top. Used by one thread.
#pragma once

#include "linux/x11/Connection.h"

#include <vector>

namespace x11 {

class WindowStack
{
public:
    explicit WindowStack(const Connection& connection) : connection(connection) {}

    /// Puts the window on top of those of its level and of lower ones, wherever it was before.
    void insert(xcb_window_t window, int level);
    void remove(xcb_window_t window);

    bool contains(xcb_window_t window) const;

    bool empty() const { return windows.empty(); }

    /// Asks the server for the right order. Nobody's pixel comes up in between: the top window
    /// goes up first, each other one directly below it.
    void raise() const;

    /// Whether the windows are the topmost ones, in their order. Asks the server; those that it
    /// does not know (any more) are dropped.
    bool checkOnTop();

private:
    struct Entry
    {
        xcb_window_t window;
        int level;
    };

    const Connection& connection;
    std::vector<Entry> windows; // lowest first
};

} // namespace x11
