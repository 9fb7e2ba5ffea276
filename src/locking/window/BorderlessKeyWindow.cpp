#include "locking/window/BorderlessKeyWindow.h"

#include "locking/CoveringWindow.h"

#include <QCloseEvent>
#include <QPainter>

namespace locking {

BorderlessKeyWindow::BorderlessKeyWindow(QWidget* parent)
    : QWidget(parent, Qt::Window | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint)
{
    setAttribute(Qt::WA_DeleteOnClose, false);
    setAttribute(Qt::WA_QuitOnClose, false);
}

void BorderlessKeyWindow::paintEvent(QPaintEvent* event)
{
    QPainter(this).fillRect(
        event->rect(),
        QColor::fromRgbF(
            static_cast<float>(LOCK_COLOR.red),
            static_cast<float>(LOCK_COLOR.green),
            static_cast<float>(LOCK_COLOR.blue)
        )
    );
}

void BorderlessKeyWindow::closeEvent(QCloseEvent* event)
{
    event->ignore(); // whoever asks: the desktop, a shortcut, the end of the toolkit's session
}

} // namespace locking
