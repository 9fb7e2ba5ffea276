#include "ui/views/BringForward.h"

#include <QApplication>
#include <QWidget>
#include <QWindow>

namespace ui {

void bringForward(QWidget& window)
{
    window.show();
    window.raise();
    window.activateWindow();
    // A window that comes back before the display has said that it lost the keyboard is not told
    // that it has it, and nothing in it would show a caret.
    if (QGuiApplication::focusWindow() == window.windowHandle() && !window.isActiveWindow()) {
        QApplication::setActiveWindow(&window);
    }
}

} // namespace ui
