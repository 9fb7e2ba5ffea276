// Keys and clicks as the toolkit delivers them to a widget.
#pragma once

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWidget>

namespace support {

inline void press(
    QWidget& widget,
    int key,
    const QString& text = QString(),
    Qt::KeyboardModifiers modifiers = Qt::NoModifier,
    bool autoRepeat = false
)
{
    QKeyEvent down(QEvent::KeyPress, key, modifiers, text, autoRepeat);
    QKeyEvent up(QEvent::KeyRelease, key, modifiers, text, autoRepeat);
    QApplication::sendEvent(&widget, &down);
    QApplication::sendEvent(&widget, &up);
}

/// Each character to whatever widget of the window has the keys then.
inline void type(const QWidget& window, const QString& text)
{
    for (const QChar character : text) {
        press(*window.focusWidget(), Qt::Key_unknown, character);
    }
}

inline void sendMouse(QWidget& widget, QEvent::Type type, const QPoint& place)
{
    const Qt::MouseButtons held =
        type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, place, widget.mapToGlobal(place), Qt::LeftButton, held, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

inline void click(QWidget& widget, const QPoint& place)
{
    sendMouse(widget, QEvent::MouseButtonPress, place);
    sendMouse(widget, QEvent::MouseButtonRelease, place);
}

inline void click(QWidget& widget)
{
    click(widget, widget.rect().center());
}

inline void doubleClick(QWidget& widget)
{
    const QPoint place = widget.rect().center();
    click(widget, place);
    sendMouse(widget, QEvent::MouseButtonDblClick, place);
    sendMouse(widget, QEvent::MouseButtonRelease, place);
}

} // namespace support
