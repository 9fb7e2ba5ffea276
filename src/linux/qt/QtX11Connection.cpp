#include "linux/qt/QtX11Connection.h"

#include <QGuiApplication>

#include <cstdlib>
#include <memory>

#include <xcb/xcb.h>

namespace qt {

void syncWithX11()
{
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr || x11->connection() == nullptr) {
        return;
    }
    xcb_connection_t* connection = x11->connection();
    const std::unique_ptr<xcb_get_input_focus_reply_t, decltype(&std::free)> reply(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr), &std::free
    );
}

} // namespace qt
