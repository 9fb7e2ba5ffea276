#include "locking/window/ScreenFollower.h"

#include <QGuiApplication>
#include <QScreen>

#include <utility>

namespace locking {

ScreenFollower::ScreenFollower(std::function<void()> onChange) : onChange(std::move(onChange))
{
    QObject::connect(qGuiApp, &QGuiApplication::primaryScreenChanged, &context, this->onChange);
    QObject::connect(
        qGuiApp,
        &QGuiApplication::screenAdded,
        &context,
        [this](const QScreen* screen) {
            follow(screen);
            this->onChange();
        }
    );
    for (const QScreen* screen : QGuiApplication::screens()) {
        follow(screen);
    }
}

void ScreenFollower::follow(const QScreen* screen)
{
    QObject::connect(screen, &QScreen::geometryChanged, &context, onChange);
}

} // namespace locking
