// The tip of an item in the tray: its title, once the pointer has rested on the item for a while.
// It goes when the pointer leaves, and after a press it stays away until then. Main thread.
#pragma once

#include <QPoint>
#include <QString>
#include <QTimer>

namespace tray {

class ItemTip
{
public:
    ItemTip();
    ~ItemTip();
    ItemTip(const ItemTip&) = delete;
    ItemTip& operator=(const ItemTip&) = delete;
    ItemTip(ItemTip&&) = delete;
    ItemTip& operator=(ItemTip&&) = delete;

    void setText(const QString& wanted) { text = wanted; }

    /// The pointer came to the item, or moved on it; the place is the toolkit's.
    void pointerMoved(const QPoint& wanted);
    void pointerLeft();
    void pressed();

private:
    void show();
    void hide();

    QString text;
    QPoint place;
    QTimer rest;
    bool shown = false;
    bool done = false; // was seen, or not wanted, since the pointer came
};

} // namespace tray
