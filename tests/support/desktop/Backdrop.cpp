#include "desktop/Backdrop.h"

namespace desktop {

void paintBackdrop(XConnection& connection, Pixel colour)
{
    xcb_change_window_attributes(connection.get(), connection.root(), XCB_CW_BACK_PIXEL, &colour);
    xcb_clear_area(connection.get(), 0, connection.root(), 0, 0, 0, 0);
    connection.sync();
}

} // namespace desktop
