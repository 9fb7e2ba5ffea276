#include "ui/popover/Popover.h"

#include "platform/Application.h"
#include "platform/Call.h"
#include "platform/Platform.h"
#include "platform/Windows.h"
#include "toolkit/ScreenGeometry.h"
#include "ui/popover/PopoverPlacement.h"
#include "ui/views/BringForward.h"
#include "ui/views/GrayGradientView.h"
#include "ui/views/Theme.h"

#include <QCloseEvent>
#include <QCursor>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>

#include <utility>

namespace ui {

namespace {

const Qt::WindowFlags AT_ITEM =
    Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::NoDropShadowWindowHint;

const Qt::WindowFlags AS_WINDOW = Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                  Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint |
                                  Qt::WindowStaysOnTopHint; // as the program's other windows

/// The line lies within the ground.
void paintRounded(QPainter& painter, const QRect& ground, int line)
{
    const double radius = Theme::RADIUS * painter.device()->devicePixelRatioF();
    const double middle = line / 2.0;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(line > 0 ? QPen(Theme::LINE, line) : QPen(Qt::NoPen));
    painter.setBrush(grayGradient(ground));
    painter.drawRoundedRect(
        QRectF(ground).adjusted(middle, middle, -middle, -middle), radius, radius
    );
}

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
    layout->setSizeConstraint(QLayout::SetFixedSize);
    connect(
        qGuiApp,
        &QGuiApplication::applicationStateChanged,
        this,
        [this](Qt::ApplicationState state) {
            // Windows of this program that come in front of it leave the program active.
            programIsActive = state != Qt::ApplicationInactive;
            if (!programIsActive && shown) {
                closeLater();
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
    if (!shown) {
        platform::Windows& windows = platform::current().windows;
        anchor = item ? toolkit::toolkitGeometry(*item) : QRect(QCursor::pos(), QSize(0, 0));
        appear(AT_ITEM, windows.composited());
        windows.excludeFromWindowsMenu(winId());
    }
    comeForward();
}

void Popover::follow(const platform::Rect& item)
{
    const QRect place = toolkit::toolkitGeometry(item);
    if (shown && isAtItem() && place != *anchor) {
        anchor = place;
        this->place();
    }
}

void Popover::showAsWindow()
{
    if (!shown) {
        anchor.reset();
        appear(AS_WINDOW, false);
    }
    comeForward();
}

void Popover::comeForward()
{
    bringForward(*this);
    // The program as a whole was brought forward too, and with it whichever of its windows was used
    // last: the desktop has to be told which of them is meant.
    platform::current().application.bringForward(winId());
}

void Popover::appear(Qt::WindowFlags flags, bool wantedRounded)
{
    shown = true;
    ++openings;
    const int border = isAtItem() ? 1 : 0;
    layout()->setContentsMargins(border, border, border, border);
    if (layout()->isEmpty()) {
        layout()->addWidget(&contentViewController.view());
    }
    contentViewController.viewWillAppear();
    setRounded(wantedRounded);
    setWindowFlags(flags);
    ensurePolished();
    adjustSize();
    place();
}

/// Corners can be rounded only where what lies below the window shines through.
void Popover::setRounded(bool wanted)
{
    if (std::exchange(rounded, wanted) == wanted) {
        return;
    }
    destroy(); // a window is translucent from its beginning, or never
    setAttribute(Qt::WA_TranslucentBackground, wanted);
    setProperty("rounded", wanted);
    for (QWidget* each : findChildren<QWidget*>()) {
        each->style()->polish(each);
    }
}

void Popover::place()
{
    if (isAtItem()) {
        setGeometry(popoverPlace(size(), *anchor, workAreaAt(anchor->center())));
    }
}

void Popover::closePopover()
{
    if (!shown) {
        return;
    }
    shown = false;
    hide();
    // The keyboard leaves with the window. One that is only hidden still counts as having it until
    // the display says otherwise, which closes a popover that was opened again meanwhile.
    destroy();
    contentViewController.viewDidDisappear();
}

/// The toolkit says so amid its dealing with the window, which must outlive that. It also says so
/// for the moment between a window that has gone and the next one that gets the keyboard.
void Popover::closeLater()
{
    const auto close = [this, opening = openings] {
        if (shown && opening == openings && !programIsActive) {
            requestClose();
        }
    };
    QMetaObject::invokeMethod(this, close, Qt::QueuedConnection);
}

void Popover::requestClose()
{
    platform::call(onCloseRequest);
}

void Popover::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    // In the screen's own pixels, so that the outline is made of whole ones.
    const double scale = devicePixelRatioF();
    painter.scale(1.0 / scale, 1.0 / scale);
    const QRect ground(QPoint(0, 0), (QSizeF(size()) * scale).toSize());
    const int line = isAtItem() ? static_cast<int>(scale) : 0;
    if (rounded) {
        paintRounded(painter, ground, line);
        return;
    }
    paintGrayGradient(painter, ground);
    for (const QRect& edge : QRegion(ground) - ground.adjusted(line, line, -line, -line)) {
        painter.fillRect(edge, Theme::LINE);
    }
}

/// A page may be larger than the one before.
void Popover::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (isVisible()) {
        place();
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
