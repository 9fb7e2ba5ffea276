#include "ui/views/MyCell.h"

#include "platform/Fatal.h"
#include "ui_MyCell.h"

#include <QVariant>

namespace ui {

QWidget* viewWithTag(const QWidget& view, int tag)
{
    for (QWidget* child : view.findChildren<QWidget*>()) {
        if (child->property("tag") == QVariant(tag)) {
            return child;
        }
    }
    return nullptr;
}

MyCell::MyCell(QWidget* parent) : QWidget(parent)
{
    Ui::MyCell().setupUi(this);
}

void MyCell::missing(int tag)
{
    platform::fatal("a cell has no control with the tag " + std::to_string(tag));
}

} // namespace ui
