// A window without a border, outside the reach of the window manager, that takes typing all the
// same, whatever alerts, menus and other windows of this program are open. It paints its whole
// ground in the lock's colour, and nothing but its owner closes it.
#pragma once

#include "locking/window/StrayKeys.h"

#include <QWidget>

#include <optional>

namespace locking {

class BorderlessKeyWindow : public QWidget
{
    Q_OBJECT

public:
    explicit BorderlessKeyWindow(QWidget* parent = nullptr);

    bool canBecomeKeyWindow() const { return true; }

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void passBlockingAlert();

    std::optional<StrayKeys> strayKeys; // while it is shown
};

} // namespace locking
