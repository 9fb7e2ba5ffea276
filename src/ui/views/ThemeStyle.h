// The toolkit's own style, but for one habit: the letter that goes with Alt is underlined while Alt
// is held, and not otherwise. Main thread only.
#pragma once

#include <QProxyStyle>

namespace ui {

class ThemeStyle : public QProxyStyle
{
    Q_OBJECT

public:
    ThemeStyle();

    int styleHint(
        StyleHint hint,
        const QStyleOption* option,
        const QWidget* widget,
        QStyleHintReturn* returnData
    ) const override;

    /// Looks at the keys of the whole program.
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void setAltHeld(bool held);

    bool altHeld = false;
};

} // namespace ui
