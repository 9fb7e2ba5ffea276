// A toolkit's window in the hands of the guard, from when it is made key until it is closed. Main
// thread.
#pragma once

#include "linux/x11/X11Desktop.h"
#include "linux/x11/X11Guard.h"
#include "platform/Windows.h"

#include <functional>

namespace x11 {

class AdoptedWindow final : public platform::PlainWindow
{
public:
    AdoptedWindow(
        X11Guard& guard,
        const X11Desktop& desktop,
        std::function<void()> syncToolkit,
        xcb_window_t window,
        const platform::WindowAttributes& attributes
    );
    ~AdoptedWindow() override;
    AdoptedWindow(const AdoptedWindow&) = delete;
    AdoptedWindow& operator=(const AdoptedWindow&) = delete;
    AdoptedWindow(AdoptedWindow&&) = delete;
    AdoptedWindow& operator=(AdoptedWindow&&) = delete;

    void makeKeyAndOrderFront() override;
    void close() override;

private:
    void sync() const;
    void apply(const X11Desktop& desktop, const platform::WindowAttributes& attributes) const;

    X11Guard& guard;
    std::function<void()> syncToolkit;
    xcb_window_t window;
    int level;
};

} // namespace x11
