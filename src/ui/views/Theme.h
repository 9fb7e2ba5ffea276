// The one look of the program: its colours, its measures on a grid of 8 pixels, its type scale and
// the style sheet made of them.
#pragma once

#include <QColor>

class QApplication;

namespace ui {

class Theme
{
public:
    /// Gives the whole program the look. Called once, before the first window.
    static void install(QApplication& application);

    /// Ground, from the bottom of a window to its top.
    static const QColor GROUND_LOW;  // 42, 43, 47
    static const QColor GROUND_HIGH; // 94, 97, 106

    static const QColor LINE;            // 99, 102, 108: separators, strips
    static const QColor BORDER;          // 150, 154, 163: outline of buttons and fields
    static const QColor BORDER_ON_LIGHT; // 190, 193, 200: the same on GROUND_HIGH and on strips
    static const QColor TEXT;            // on any ground
    static const QColor QUIET;           // secondary text
    static const QColor ACCENT;          // what is chosen or the default
    static const QColor FOCUS;           // outline of what has the keyboard; TEXT on ACCENT
    static const QColor DISABLED;

    static constexpr int GRID = 8;
    static constexpr int RADIUS = 6;
};

} // namespace ui
