// Shows a window above the others and gives it the keyboard. Main thread only.
#pragma once

class QWidget;

namespace ui {

void bringForward(QWidget& window);

} // namespace ui
