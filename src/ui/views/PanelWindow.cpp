#include "ui/views/PanelWindow.h"

#include "ui/views/BringForward.h"
#include "ui/views/GrayGradientView.h"

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

void PanelWindow::orderFront()
{
    setAttribute(Qt::WA_ShowWithoutActivating, true);
    show();
    raise();
}

void PanelWindow::makeKeyAndOrderFront()
{
    setAttribute(Qt::WA_ShowWithoutActivating, false);
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

void PanelWindow::mousePressEvent(QMouseEvent* event)
{
    // Only what no control took for itself comes here.
    if (event->button() == Qt::LeftButton && windowHandle() != nullptr) {
        windowHandle()->startSystemMove();
    }
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
    const std::function<void()> listener = onClose;
    if (listener) {
        listener();
    }
}

} // namespace ui
