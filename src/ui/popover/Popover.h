// The window that a popover's view is shown in: a frameless one at the status item or, where no
// status area shows the item, an ordinary small window. It holds no grab of the keyboard or the
// pointer, and never closes by itself: it asks to be closed when the user is done with it. Main
// thread only.
#pragma once

#include "platform/Geometry.h"
#include "ui/views/ViewController.h"

#include <QWidget>

#include <functional>
#include <optional>

namespace ui {

class Popover : public QWidget
{
    Q_OBJECT

public:
    /// `contentViewController` must outlive this.
    explicit Popover(ViewController& contentViewController);
    ~Popover() override;
    Q_DISABLE_COPY_MOVE(Popover)

    /// Shows the popover at the item, or at the pointer where its place is not known. One that is
    /// shown already only comes forward.
    void showAtItem(const std::optional<platform::Rect>& item);

    /// The item is there now: a popover that is shown at it, or at the pointer for want of a place,
    /// goes there.
    void follow(const platform::Rect& item);

    /// Shows it as a window of its own.
    void showAsWindow();

    /// Puts it, where it is shown, in front of everything else and gives it the keyboard.
    void comeForward();

    /// Takes it off the screen; does nothing where it is not shown.
    void closePopover();

    bool isShown() const { return shown; }

    /// The user pressed Escape, closed the window, or went to another application.
    std::function<void()> onCloseRequest;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void appear(Qt::WindowFlags flags, bool wantedRounded);
    void setRounded(bool wanted);
    void place();

    bool isAtItem() const { return anchor.has_value(); }

    void closeLater();
    void requestClose();

    ViewController& contentViewController;
    bool shown = false;
    bool programIsActive = true; // as the toolkit said last
    unsigned openings = 0;
    bool rounded = false;
    std::optional<QRect> anchor; // nothing while it is a window of its own
};

} // namespace ui
