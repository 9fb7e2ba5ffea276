#include "locking/window/StrayKeys.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>
#include <QWindow>

namespace locking {

StrayKeys::StrayKeys(const QWidget& owner) : owner(owner)
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool StrayKeys::eventFilter(QObject* object, QEvent* event)
{
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
    QWindow* const window = owner.windowHandle();
    if (!isKey || !object->isWindowType() || window == nullptr || object == window) {
        return QObject::eventFilter(object, event);
    }
    QCoreApplication::sendEvent(window, event);
    return true;
}

} // namespace locking
