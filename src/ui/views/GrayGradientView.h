// The ground of the program's windows: dark grey, lighter towards the top.
#pragma once

#include <QWidget>

class QPainter;

namespace ui {

/// The brush of that ground for an area.
QBrush grayGradient(const QRect& area);

/// Paints that ground.
void paintGrayGradient(QPainter& painter, const QRect& area);

class GrayGradientView : public QWidget
{
    Q_OBJECT

public:
    explicit GrayGradientView(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace ui
