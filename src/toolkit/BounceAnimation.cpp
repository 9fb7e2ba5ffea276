#include "toolkit/BounceAnimation.h"

#include <QEasingCurve>
#include <QLayout>
#include <QVariantAnimation>

namespace toolkit {

namespace {

constexpr int LEG_MS = 100;
constexpr int REPEAT_COUNT = 2;

QEasingCurve easeInEaseOut()
{
    QEasingCurve curve(QEasingCurve::BezierSpline);
    curve.addCubicBezierSegment(QPointF(0.42, 0.0), QPointF(0.58, 1.0), QPointF(1.0, 1.0));
    return curve;
}

} // namespace

BounceAnimation::BounceAnimation(QWidget& view) : view(view), animation(&view)
{
    animation.setObjectName("position");
    animation.setLoopCount(REPEAT_COUNT);
    addLeg(0.0, 1.0);
    addLeg(1.0, 0.0);
    QObject::connect(&animation, &QAbstractAnimation::finished, &animation, [this] { settle(); });
}

void BounceAnimation::addLeg(double from, double to)
{
    auto* const leg = new QVariantAnimation(&animation);
    leg->setDuration(LEG_MS);
    leg->setEasingCurve(easeInEaseOut());
    leg->setStartValue(from);
    leg->setEndValue(to);
    QObject::connect(leg, &QVariantAnimation::valueChanged, leg, [this](const QVariant& value) {
        place(value.toDouble());
    });
    animation.addAnimation(leg);
}

void BounceAnimation::start(int wantedDepth)
{
    animation.stop();
    settle();
    restingPlace = view.y();
    depth = wantedDepth;
    animation.start();
}

void BounceAnimation::place(double part)
{
    view.move(view.x(), restingPlace + qRound(part * depth));
}

void BounceAnimation::settle()
{
    QLayout* const layout = view.parentWidget()->layout();
    layout->invalidate();
    layout->activate();
}

} // namespace toolkit
