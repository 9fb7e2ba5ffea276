// A check box that looks like a switch, in a row of its own as those of a list. Main thread only.
#pragma once

#include <QCheckBox>

namespace ui {

class SwitchView : public QCheckBox
{
    Q_OBJECT

public:
    explicit SwitchView(QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool hitButton(const QPoint& position) const override;

private:
    void paintSwitch(QPainter& painter) const;
    void paintText(QPainter& painter) const;
};

} // namespace ui
