#include "toolkit/ScreenGeometry.h"

#include <QGuiApplication>
#include <QScreen>

namespace toolkit {

namespace {

/// The toolkit leaves the origin of a scaled screen where it is and shrinks its size.
QRect desktopGeometry(const QScreen& screen)
{
    const QRect own = screen.geometry();
    return {own.topLeft(), own.size() * screen.devicePixelRatio()};
}

} // namespace

QRect toolkitGeometry(const platform::Rect& frame)
{
    const QRect wanted(frame.x, frame.y, frame.width, frame.height);
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect held = desktopGeometry(*screen);
        if (held == wanted) {
            return screen->geometry();
        }
        if (held.contains(wanted.topLeft())) {
            const double ratio = screen->devicePixelRatio();
            const QPoint inside = (wanted.topLeft() - held.topLeft()) / ratio;
            return {screen->geometry().topLeft() + inside, wanted.size() / ratio};
        }
    }
    return wanted;
}

} // namespace toolkit
