#include "ui/views/PanelWindow.h"

#include "platform/Call.h"
#include "ui/views/BringForward.h"
#include "ui/views/GrayGradientView.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWindow>

namespace ui {

PanelWindow::PanelWindow(QWidget* parent) : QWidget(parent)
{
    setWindowFlags(
        Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
        Qt::WindowCloseButtonHint | Qt::WindowStaysOnTopHint
    );
}

void PanelWindow::makeKeyAndOrderFront()
{
    setWindowState(windowState() & ~Qt::WindowMinimized);
    bringForward(*this);
}

void PanelWindow::setBackgroundColor(const QColor& color)
{
    background = color;
    update();
}

void PanelWindow::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    if (background) {
        painter.fillRect(rect(), *background);
    } else {
        paintGrayGradient(painter, rect());
    }
}

// Only what no control took for itself comes to these three.

void PanelWindow::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        pressedAt = event->position().toPoint();
    }
}

void PanelWindow::mouseMoveEvent(QMouseEvent* event)
{
    // A window manager that is asked to move the window at a mere click would go on moving it.
    const bool dragged =
        pressedAt && (event->position().toPoint() - *pressedAt).manhattanLength() >=
                         QApplication::startDragDistance();
    if (dragged && windowHandle() != nullptr) {
        pressedAt.reset();
        windowHandle()->startSystemMove();
    }
}

void PanelWindow::mouseReleaseEvent(QMouseEvent* /*event*/)
{
    pressedAt.reset();
}

void PanelWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape) {
        close();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void PanelWindow::closeEvent(QCloseEvent* event)
{
    for (auto* const sheet : findChildren<QDialog*>(QString(), Qt::FindDirectChildrenOnly)) {
        sheet->close(); // nobody could tell what it belongs to
    }
    event->accept();
    if (!isVisible()) {
        return; // it was closed before
    }
    platform::call(onClose);
}

} // namespace ui
