// One row of a list of applications: icon, name and a button at the end.
#pragma once

#include <QWidget>

namespace ui {

/// The descendant of `view` whose dynamic property "tag" is `tag`, or nothing.
QWidget* viewWithTag(const QWidget& view, int tag);

class MyCell : public QWidget
{
    Q_OBJECT

public:
    static constexpr int ICON_TAG = 10;     // an ImageView
    static constexpr int NAME_TAG = 100;    // an ElidedLabel
    static constexpr int BUTTON_TAG = 1000; // an ImageButtonView

    explicit MyCell(QWidget* parent = nullptr);

    /// The control with that tag. Fatal where the form has none of that type.
    template <typename Control> Control& control(int tag) const
    {
        auto* const found = qobject_cast<Control*>(viewWithTag(*this, tag));
        if (found == nullptr) {
            missing(tag);
        }
        return *found;
    }

private:
    [[noreturn]] static void missing(int tag);
};

} // namespace ui
