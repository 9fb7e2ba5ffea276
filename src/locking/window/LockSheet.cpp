#include "locking/window/LockSheet.h"

#include <QSize>

namespace locking {

namespace {

constexpr auto SHEET = R"(
QWidget {
    color: white;
    selection-background-color: rgba(255, 255, 255, 89);
    selection-color: white;
    background: transparent;
}
QLabel, QLineEdit, QPushButton { margin: 0; padding: 0; border: none; }
QLineEdit { min-width: %1px; max-width: %1px; min-height: %2px; max-height: %2px; }
QLabel#capsLockLabel { color: rgb(255, 214, 120); }
QLabel#keyboardLayoutLabel { color: rgb(200, 204, 212); }
QPushButton#keyboardLayoutButton { color: rgb(200, 204, 212); }
QPushButton#keyboardLayoutButton:hover, QPushButton#keyboardLayoutButton:pressed { color: white; }
QLabel#errorMessageLabelOutlet { color: rgb(255, 176, 168); }
)";

} // namespace

QString lockSheet(const QSize& field)
{
    return QString::fromLatin1(SHEET).arg(field.width()).arg(field.height());
}

} // namespace locking
