#include "ui/views/ImageButtonView.h"

#include "platform/Call.h"
#include "ui/views/Images.h"
#include "ui/views/Theme.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace ui {

namespace {

constexpr double FADED = 0.3;
constexpr int FADE_MS = 200;
constexpr int SIDE = 24;

} // namespace

ImageButtonView::ImageButtonView(QWidget* parent) : QAbstractButton(parent)
{
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    fade.setDuration(FADE_MS);
    connect(&fade, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        alpha = value.toDouble();
        update();
    });
    fadeEnd.setSingleShot(true);
    fadeEnd.setInterval(FADE_MS);
    // Assistive tools neither press a key nor a button of the mouse.
    connect(this, &QAbstractButton::clicked, this, [this] { click(); });
    connect(&fadeEnd, &QTimer::timeout, this, [this] { stopFadeAnimation(); });
}

void ImageButtonView::initiate(int wantedId, bool wantedAnimated)
{
    id = wantedId;
    animated = wantedAnimated;
    tracking = true;
}

void ImageButtonView::setImageName(const QString& wantedName)
{
    setIcon(requiredImage(wantedName));
    name = wantedName;
}

QSize ImageButtonView::sizeHint() const
{
    return {SIDE, SIDE};
}

void ImageButtonView::startFadeAnimation()
{
    fadeTo(FADED);
    fadeEnd.start();
}

void ImageButtonView::stopFadeAnimation()
{
    fadeTo(1.0);
}

void ImageButtonView::fadeTo(double opacity)
{
    fade.stop();
    fade.setStartValue(alpha);
    fade.setEndValue(opacity);
    fade.start();
}

void ImageButtonView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        click();
    }
}

void ImageButtonView::mouseDoubleClickEvent(QMouseEvent* event)
{
    event->accept();
}

void ImageButtonView::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!event->isAutoRepeat()) {
            click(); // one that is held would go on to what takes the place of what it acted on
        }
        return;
    default:
        QAbstractButton::keyPressEvent(event);
    }
}

void ImageButtonView::click() const
{
    platform::call(onClick, id);
}

void ImageButtonView::enterEvent(QEnterEvent* event)
{
    QAbstractButton::enterEvent(event);
    if (!tracking) {
        return;
    }
    if (animated) {
        startFadeAnimation();
    }
    setCursor(Qt::ArrowCursor);
}

void ImageButtonView::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (hasFocus()) {
        // Two rings, so that one of them stands out from any ground.
        painter.setPen(Theme::TEXT);
        painter.drawRoundedRect(
            QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), Theme::RADIUS, Theme::RADIUS
        );
        painter.setPen(Theme::ACCENT);
        painter.drawRoundedRect(
            QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5), Theme::RADIUS, Theme::RADIUS
        );
    }
    painter.setOpacity(isEnabled() ? alpha : FADED);
    icon().paint(&painter, rect().adjusted(PADDING, PADDING, -PADDING, -PADDING));
}

} // namespace ui
