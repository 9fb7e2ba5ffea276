// A terminal that writes down, line by line, what is typed into it.
#pragma once

#include "X11World.h"
#include "desktop/TemporaryFolder.h"

#include <filesystem>
#include <string>

class Terminal
{
public:
    explicit Terminal(X11World& world)
        : world(world),
          file(world.session.folder() / "typed"),
          process(world.session.start({"xterm", "-e", "sh", "-c", "exec cat > " + file.string()}))
    {
    }

    bool hasFocusSoon()
    {
        return world.mainLoop.runUntil([this] {
            const xcb_window_t window = world.session.windows().ofClass("XTerm");
            return window != XCB_NONE && world.session.windows().active() == window &&
                   focusIsIn(window) && std::filesystem::exists(file);
        });
    }

    /// Its window, which a window manager must manage; XCB_NONE when it does not come.
    xcb_window_t windowSoon()
    {
        xcb_window_t window = XCB_NONE;
        const bool isThere = world.mainLoop.runUntil([&] {
            window = world.session.windows().ofClass("XTerm");
            return window != XCB_NONE && world.session.windows().isViewable(window);
        });
        return isThere ? window : XCB_NONE;
    }

    pid_t processIdentifier() const { return process.id(); }

    bool readsSoon(const std::string& text)
    {
        return world.mainLoop.runUntil([&] { return desktop::readFile(file) == text; });
    }

private:
    /// In the window itself or in one of its children.
    bool focusIsIn(xcb_window_t window)
    {
        desktop::XConnection& connection = world.session.connection();
        xcb_window_t focused = world.session.windows().focused();
        while (focused > XCB_INPUT_FOCUS_POINTER_ROOT && focused != window &&
               focused != connection.root()) {
            const desktop::Reply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(
                connection.get(), xcb_query_tree(connection.get(), focused), nullptr
            ));
            focused = tree ? tree->parent : xcb_window_t{XCB_NONE};
        }
        return focused == window;
    }

    X11World& world;
    std::filesystem::path file;
    desktop::ChildProcess process;
};
