#include "linux/x11/X11Windows.h"

#include "linux/x11/AdoptedWindow.h"
#include "linux/x11/CoverWindow.h"

#include <utility>

namespace x11 {

X11Windows::X11Windows(
    X11Guard& guard, const X11Desktop& desktop, std::function<void()> syncToolkit
)
    : guard(guard),
      desktop(desktop),
      syncToolkit(std::move(syncToolkit))
{
}

std::unique_ptr<platform::PlainWindow>
X11Windows::createWindow(const platform::WindowAttributes& attributes)
{
    return std::make_unique<CoverWindow>(guard, attributes);
}

std::unique_ptr<platform::PlainWindow>
X11Windows::adoptWindow(std::uintptr_t nativeWindow, const platform::WindowAttributes& attributes)
{
    return std::make_unique<AdoptedWindow>(
        guard, desktop, syncToolkit, static_cast<xcb_window_t>(nativeWindow), attributes
    );
}

} // namespace x11
