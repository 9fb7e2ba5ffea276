// The controller of a window that is loaded from a form on first use and kept when it is closed.
#pragma once

#include "ui/views/PanelWindow.h"

#include <memory>

namespace ui {

class WindowController
{
public:
    WindowController() = default;
    Q_DISABLE_COPY_MOVE(WindowController)
    virtual ~WindowController();

    /// The window; loaded, and `windowDidLoad` called, on first use.
    PanelWindow& window();

    bool isWindowLoaded() const { return loadedWindow != nullptr; }

    /// Closes the window where it is loaded.
    void close();

    virtual void windowDidLoad() {}

protected:
    /// Makes the window from its form and connects the outlets. Never empty.
    virtual std::unique_ptr<PanelWindow> loadWindow() = 0;

private:
    std::unique_ptr<PanelWindow> loadedWindow;
};

} // namespace ui
