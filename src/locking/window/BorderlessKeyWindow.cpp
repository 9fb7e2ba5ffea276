#include "locking/window/BorderlessKeyWindow.h"

#include <QCloseEvent>

namespace locking {

BorderlessKeyWindow::BorderlessKeyWindow(QWidget* parent)
    : QWidget(parent, Qt::Window | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint)
{
    setAttribute(Qt::WA_DeleteOnClose, false);
    setAttribute(Qt::WA_QuitOnClose, false);
    setAutoFillBackground(true);
}

void BorderlessKeyWindow::closeEvent(QCloseEvent* event)
{
    event->ignore(); // whoever asks: the desktop, a shortcut, the end of the toolkit's session
}

} // namespace locking
