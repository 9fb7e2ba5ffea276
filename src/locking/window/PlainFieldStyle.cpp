#include "locking/window/PlainFieldStyle.h"

namespace locking {

PlainFieldStyle::PlainFieldStyle() : QProxyStyle("Fusion") {}

int PlainFieldStyle::pixelMetric(
    PixelMetric metric, const QStyleOption* option, const QWidget* widget
) const
{
    return metric == PM_TextCursorWidth ? 0 : QProxyStyle::pixelMetric(metric, option, widget);
}

int PlainFieldStyle::styleHint(
    StyleHint hint, const QStyleOption* option, const QWidget* widget, QStyleHintReturn* returnData
) const
{
    return hint == SH_LineEdit_PasswordMaskDelay
               ? 0
               : QProxyStyle::styleHint(hint, option, widget, returnData);
}

} // namespace locking
