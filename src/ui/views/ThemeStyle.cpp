#include "ui/views/ThemeStyle.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

namespace ui {

ThemeStyle::ThemeStyle() : QProxyStyle(QStringLiteral("Fusion"))
{
    qApp->installEventFilter(this);
}

int ThemeStyle::styleHint(
    StyleHint hint, const QStyleOption* option, const QWidget* widget, QStyleHintReturn* returnData
) const
{
    return hint == SH_UnderlineShortcut ? static_cast<int>(altHeld)
                                        : QProxyStyle::styleHint(hint, option, widget, returnData);
}

bool ThemeStyle::eventFilter(QObject* /*object*/, QEvent* event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Alt) {
            setAltHeld(event->type() == QEvent::KeyPress);
        }
        break;
    case QEvent::WindowDeactivate: // the release of the key goes elsewhere
        setAltHeld(false);
        break;
    default:
        break;
    }
    return false;
}

void ThemeStyle::setAltHeld(bool held)
{
    if (altHeld == held) {
        return;
    }
    altHeld = held;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        window->update();
    }
}

} // namespace ui
