#include "ui/popover/Popover.h"

#include "toolkit/ScreenGeometry.h"
#include "ui/popover/PopoverPlacement.h"
#include "ui/views/GrayGradientView.h"
#include "ui/views/Theme.h"

#include <QCloseEvent>
#include <QCursor>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>

namespace ui {

namespace {

const Qt::WindowFlags AT_ITEM =
    Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::NoDropShadowWindowHint;

QRect workAreaAt(const QPoint& point)
{
    const QScreen* screen = QGuiApplication::screenAt(point);
    if (screen == nullptr) {
        screen = QGuiApplication::primaryScreen();
    }
    return screen->availableGeometry();
}

} // namespace

Popover::Popover(ViewController& contentViewController)
    : contentViewController(contentViewController)
{
    setWindowTitle(QStringLiteral("Tarvel"));
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(1, 1, 1, 1); // the border
    layout->setSizeConstraint(QLayout::SetFixedSize);
    connect(
        qGuiApp,
        &QGuiApplication::applicationStateChanged,
        this,
        [this](Qt::ApplicationState state) {
            if (state == Qt::ApplicationInactive && isVisible() && isAtItem()) {
                requestClose();
            }
        }
    );
}

Popover::~Popover()
{
    if (contentViewController.isViewLoaded()) {
        contentViewController.view().setParent(nullptr); // it is the controller's
    }
}

void Popover::showAtItem(const std::optional<platform::Rect>& item)
{
    if (item) {
        appear(AT_ITEM, toolkit::toolkitGeometry(*item));
    } else {
        appear(AT_ITEM, QRect(QCursor::pos(), QSize(0, 0)));
    }
}

void Popover::showAsWindow()
{
    appear(Qt::Window, std::nullopt);
}

void Popover::appear(Qt::WindowFlags flags, const std::optional<QRect>& anchor)
{
    if (!shown) {
        if (layout()->isEmpty()) {
            layout()->addWidget(&contentViewController.view());
        }
        contentViewController.viewWillAppear();
        setWindowFlags(flags);
        ensurePolished();
        adjustSize();
        if (anchor) {
            setGeometry(popoverPlace(size(), *anchor, workAreaAt(anchor->center())));
        }
        shown = true;
    }
    comeForward();
}

void Popover::comeForward()
{
    show();
    raise();
    activateWindow();
}

void Popover::closePopover()
{
    if (!shown) {
        return;
    }
    shown = false;
    hide();
    contentViewController.viewDidDisappear();
}

void Popover::requestClose()
{
    const std::function<void()> listener = onCloseRequest;
    if (listener) {
        listener();
    }
}

bool Popover::isAtItem() const
{
    return windowFlags().testFlag(Qt::FramelessWindowHint);
}

void Popover::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    paintGrayGradient(painter, rect());
    if (isAtItem()) {
        painter.setPen(Theme::LINE);
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

void Popover::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape) {
        requestClose();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void Popover::closeEvent(QCloseEvent* event)
{
    event->ignore(); // whoever is asked closes it
    requestClose();
}

} // namespace ui
