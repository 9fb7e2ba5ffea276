// A window that asks a system tray to take it in. It keeps the tray's ground where it is not
// painted. Main thread; the callbacks may end it.
#pragma once

#include "linux/x11/X11Desktop.h"
#include "platform/Geometry.h"

#include <QImage>
#include <QSize>
#include <QString>

#include <cstdint>
#include <functional>
#include <optional>

namespace tray {

class TrayWindow
{
public:
    /// The desktop must outlive this; `manager` is the tray's window.
    TrayWindow(x11::X11Desktop& desktop, xcb_window_t manager);
    ~TrayWindow();
    TrayWindow(const TrayWindow&) = delete;
    TrayWindow& operator=(const TrayWindow&) = delete;
    TrayWindow(TrayWindow&&) = delete;
    TrayWindow& operator=(TrayWindow&&) = delete;

    /// Has to be painted.
    std::function<void()> onExposed;

    /// A button was pressed there. The pointer is not held any more, so that menus can hold it.
    std::function<void(std::uint8_t button, int rootX, int rootY)> onPressed;

    /// The pointer came to it, or moved on it.
    std::function<void(int rootX, int rootY)> onPointerMoved;

    std::function<void()> onPointerLeft;

    /// The tray does not hold it any more.
    std::function<void()> onLetGo;

    QSize size() const { return extent; }

    /// Nothing before the tray took it in.
    std::optional<platform::Rect> frame() const;

    void setTitle(const QString& title);

    /// `picture` is premultiplied and of the window's size.
    void paint(const QImage& picture);

private:
    void create(xcb_visualid_t trayVisual);
    void askForDocking(xcb_window_t manager) const;
    void handle(const xcb_generic_event_t& event);
    void handleConfigure(const xcb_configure_notify_event_t& event);
    void handleExpose(const xcb_expose_event_t& event) const;
    void handlePress(const xcb_button_press_event_t& event) const;
    void handlePointer(const xcb_generic_event_t& event) const;
    void handleReparent(const xcb_reparent_notify_event_t& event);
    void letGo() const;

    const x11::X11Desktop& desktop;
    xcb_window_t window;
    xcb_visualid_t visual = XCB_NONE;
    xcb_colormap_t colormap = XCB_NONE; // for a visual that is not the root's
    QSize extent;                       // until the tray says otherwise, what panels usually give
    bool docked = false;
    x11::X11Desktop::Subscription subscription;
};

} // namespace tray
