// One line of plain text. What does not fit is left out at its end, and shown when the pointer
// rests on it.
#pragma once

#include <QLabel>

namespace ui {

class ElidedLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    QString shownText() const;
};

} // namespace ui
