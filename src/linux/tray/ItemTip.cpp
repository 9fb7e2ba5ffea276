#include "linux/tray/ItemTip.h"

#include "toolkit/ToolTip.h"

#include <QApplication>
#include <QStyle>
#include <QToolTip>

#include <utility>

namespace tray {

ItemTip::ItemTip()
{
    rest.setSingleShot(true);
    QObject::connect(&rest, &QTimer::timeout, &rest, [this] { show(); });
}

ItemTip::~ItemTip()
{
    hide();
}

void ItemTip::pointerMoved(const QPoint& wanted)
{
    if (done) {
        return;
    }
    place = wanted;
    rest.start(QApplication::style()->styleHint(QStyle::SH_ToolTip_WakeUpDelay));
}

void ItemTip::pointerLeft()
{
    done = false;
    hide();
}

void ItemTip::pressed()
{
    done = true;
    hide();
}

void ItemTip::show()
{
    done = true;
    shown = true;
    QToolTip::showText(place, toolkit::toolTipOf(text));
}

void ItemTip::hide()
{
    rest.stop();
    if (std::exchange(shown, false)) {
        QToolTip::hideText();
    }
}

} // namespace tray
