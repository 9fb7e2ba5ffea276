// A window without a border, outside the reach of the window manager, that takes typing all the
// same. It paints its whole ground in the lock's colour, and nothing but its owner closes it.
#pragma once

#include <QWidget>

namespace locking {

class BorderlessKeyWindow : public QWidget
{
    Q_OBJECT

public:
    explicit BorderlessKeyWindow(QWidget* parent = nullptr);

    bool canBecomeKeyWindow() const { return true; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
};

} // namespace locking
