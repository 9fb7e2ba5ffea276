// Which windows are there, whose they are, which is in front. One thread at a time.
#pragma once

#include "desktop/Rectangle.h"
#include "desktop/XConnection.h"

#include <string>
#include <vector>

#include <sys/types.h>

namespace desktop {

class WindowList
{
public:
    explicit WindowList(XConnection& connection) : connection(connection) {}

    /// The windows that the window manager manages, oldest first. One that it goes on listing
    /// though it is no longer there is none of them.
    std::vector<xcb_window_t> managed();

    /// The active window; 0 when none is.
    xcb_window_t active();

    /// The process whose window is active, as the window says; 0 when none is.
    pid_t activeProcess();

    /// The window that typed keys go to when nobody holds the keyboard.
    xcb_window_t focused();

    /// Class part of WM_CLASS.
    std::string classOf(xcb_window_t window);

    /// The managed window of this class; 0 when there is none.
    xcb_window_t ofClass(const std::string& windowClass);

    /// What the title bar says.
    std::string titleOf(xcb_window_t window);

    /// The latest managed window with this title; 0 when there is none.
    xcb_window_t ofTitle(const std::string& title);

    bool exists(xcb_window_t window);
    bool isViewable(xcb_window_t window);

    /// Where the window lies in the root window.
    Rectangle placeOf(xcb_window_t window);

    /// The viewable child windows of the root, lowest first.
    std::vector<xcb_window_t> viewableTopLevels();

private:
    XConnection& connection;
};

} // namespace desktop
