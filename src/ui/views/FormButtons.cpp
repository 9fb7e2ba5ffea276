#include "ui/views/FormButtons.h"

#include <QKeyEvent>
#include <QPushButton>

namespace ui {

void FormButtons::install(QWidget& form)
{
    static FormButtons filter; // keeps nothing, and so serves all forms
    for (auto* const button : form.findChildren<QPushButton*>()) {
        button->setAutoDefault(false);
        button->installEventFilter(&filter);
    }
}

bool FormButtons::eventFilter(QObject* object, QEvent* event)
{
    auto* const button = qobject_cast<QPushButton*>(object);
    if (button == nullptr || event->type() != QEvent::KeyPress) {
        return false;
    }
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key != Qt::Key_Return && key != Qt::Key_Enter) {
        return false;
    }
    if (!static_cast<QKeyEvent*>(event)->isAutoRepeat()) {
        button->click();
    }
    return true;
}

} // namespace ui
