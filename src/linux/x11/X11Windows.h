// The lock's windows on an X11 display: outside the window manager, kept on top by the guard; and
// what window managers are told of the others. Main thread only.
#pragma once

#include "linux/x11/Compositor.h"
#include "linux/x11/X11Desktop.h"
#include "linux/x11/X11Guard.h"
#include "platform/Windows.h"

#include <functional>

namespace x11 {

class X11Windows final : public platform::Windows
{
public:
    /// Both must outlive this and every window. `syncToolkit` returns when the display has done
    /// everything that the toolkit asked for so far: adopted windows come over another connection.
    X11Windows(X11Guard& guard, const X11Desktop& desktop, std::function<void()> syncToolkit);

    std::unique_ptr<platform::PlainWindow> createWindow(const platform::WindowAttributes& attributes
    ) override;

    std::unique_ptr<platform::PlainWindow>
    adoptWindow(std::uintptr_t nativeWindow, const platform::WindowAttributes& attributes) override;

    void excludeFromWindowsMenu(std::uintptr_t nativeWindow) override;
    bool composited() override;

private:
    X11Guard& guard;
    const X11Desktop& desktop;
    std::function<void()> syncToolkit;
    Compositor compositor;
};

} // namespace x11
