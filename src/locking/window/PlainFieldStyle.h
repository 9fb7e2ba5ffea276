// The toolkit's own style for a field that paints ground and caret itself: the toolkit's caret is
// the inverse of what is below it, and grey on the lock. No typed character shows, not even for a
// moment.
#pragma once

#include <QProxyStyle>

namespace locking {

class PlainFieldStyle : public QProxyStyle
{
public:
    PlainFieldStyle();

    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget)
        const override;
    int styleHint(
        StyleHint hint,
        const QStyleOption* option,
        const QWidget* widget,
        QStyleHintReturn* returnData
    ) const override;
};

} // namespace locking
