// A window of the program: on the gray gradient, above ordinary windows, moved by its ground as
// well as by its title bar. Escape closes it, as its close button does, and its sheets with it.
#pragma once

#include <QPoint>
#include <QWidget>

#include <functional>
#include <optional>

namespace ui {

class PanelWindow : public QWidget
{
    Q_OBJECT

public:
    explicit PanelWindow(QWidget* parent = nullptr);

    /// Shows the window above the others, and the keyboard goes to it.
    void makeKeyAndOrderFront();

    /// One colour in place of the gradient.
    void setBackgroundColor(const QColor& color);

    /// The window was closed, by whomever.
    std::function<void()> onClose;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    std::optional<QColor> background;
    std::optional<QPoint> pressedAt;
};

} // namespace ui
