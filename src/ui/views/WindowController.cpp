#include "ui/views/WindowController.h"

#include "platform/Fatal.h"
#include "ui/views/FormButtons.h"

namespace ui {

WindowController::~WindowController() = default;

PanelWindow& WindowController::window()
{
    if (loadedWindow == nullptr) {
        loadedWindow = loadWindow();
        if (loadedWindow == nullptr) {
            platform::fatal("a window could not be loaded");
        }
        FormButtons::install(*loadedWindow);
        windowDidLoad();
    }
    return *loadedWindow;
}

void WindowController::close()
{
    if (loadedWindow != nullptr) {
        loadedWindow->close();
    }
}

} // namespace ui
