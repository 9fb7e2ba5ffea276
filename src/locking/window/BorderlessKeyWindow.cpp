#include "locking/window/BorderlessKeyWindow.h"

#include "platform/Windows.h"
#include "toolkit/QtColor.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QPainter>
#include <QWindow>

namespace locking {

BorderlessKeyWindow::BorderlessKeyWindow(QWidget* parent)
    : QWidget(parent, Qt::Window | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint)
{
    setAttribute(Qt::WA_DeleteOnClose, false);
    setAttribute(Qt::WA_QuitOnClose, false);
}

bool BorderlessKeyWindow::event(QEvent* event)
{
    const bool done = QWidget::event(event);
    if (event->type() == QEvent::WindowBlocked) {
        passBlockingAlert();
    }
    return done;
}

/// Of several alerts the next one blocks when the latest goes, and that is not told.
bool BorderlessKeyWindow::eventFilter(QObject* object, QEvent* event)
{
    if (event->type() == QEvent::Hide) {
        object->removeEventFilter(this);
        passBlockingAlert();
    }
    return QWidget::eventFilter(object, event);
}

/// A modal alert keeps keys and clicks from all windows but its own and those that stand on it.
void BorderlessKeyWindow::passBlockingAlert()
{
    QWindow* const alert = QGuiApplication::modalWindow();
    if (windowHandle() != nullptr && alert != nullptr) {
        alert->installEventFilter(this);
        windowHandle()->setTransientParent(alert);
    }
}

void BorderlessKeyWindow::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    strayKeys.emplace(*this);
}

void BorderlessKeyWindow::hideEvent(QHideEvent* event)
{
    strayKeys.reset();
    QWidget::hideEvent(event);
}

void BorderlessKeyWindow::paintEvent(QPaintEvent* event)
{
    QPainter(this).fillRect(event->rect(), toolkit::colorOf(platform::LOCK_COLOR));
}

void BorderlessKeyWindow::closeEvent(QCloseEvent* event)
{
    event->ignore(); // whoever asks: the desktop, a shortcut, the end of the toolkit's session
}

} // namespace locking
