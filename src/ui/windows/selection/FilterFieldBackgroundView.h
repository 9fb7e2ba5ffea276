// What lies beneath the filter field: white at an opacity of 0.2 on the darkest ground, so that
// text on it stays legible. Its outline shows whether the keys go to the field.
#pragma once

#include <QWidget>

namespace ui {

class FilterFieldBackgroundView : public QWidget
{
    Q_OBJECT

public:
    explicit FilterFieldBackgroundView(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace ui
