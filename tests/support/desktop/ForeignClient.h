// What another program may do that gets in the way of a lock. One thread at a time.
#pragma once

#include "desktop/Pixels.h"
#include "desktop/Rectangle.h"
#include "desktop/XConnection.h"

namespace desktop {

/// A window of one colour outside the window manager's reach, as menus and notifications are; it is
/// not shown yet.
xcb_window_t createForeignWindow(XConnection& connection, const Rectangle& place, Pixel colour);

/// The same, shown.
xcb_window_t showForeignWindow(XConnection& connection, const Rectangle& place, Pixel colour);

/// Takes keyboard and pointer, as a program with an open menu does. False when it does not get
/// both.
bool grabInput(XConnection& connection);

void releaseInput(XConnection& connection);

} // namespace desktop
