#include "ui/views/ImageView.h"

#include "ui/views/Images.h"

#include <QPainter>

namespace ui {

ImageView::ImageView(QWidget* parent) : QWidget(parent) {}

void ImageView::setImageName(const QString& wanted)
{
    icon = requiredImage(wanted);
    name = wanted;
    update();
}

void ImageView::setImage(const QIcon& wanted)
{
    icon = wanted;
    name.clear();
    update();
}

void ImageView::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    icon.paint(&painter, rect());
}

} // namespace ui
