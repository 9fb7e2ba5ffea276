// The controller of a view that is part of a window. The view is loaded on first use; its owner
// says when it comes and goes.
#pragma once

#include <QPointer>
#include <QWidget>

#include <memory>

namespace ui {

class ViewController
{
public:
    ViewController() = default;
    Q_DISABLE_COPY_MOVE(ViewController)
    virtual ~ViewController();

    /// The view; loaded, and `viewDidLoad` called, on first use.
    QWidget& view();

    bool isViewLoaded() const { return !loadedView.isNull(); }

    virtual void viewDidLoad() {}

    /// Before the view is shown.
    virtual void viewWillAppear() {}

    /// After the view was taken off the screen.
    virtual void viewDidDisappear() {}

protected:
    /// Makes the view from its form and connects the outlets. Never empty.
    virtual std::unique_ptr<QWidget> loadView() = 0;

private:
    QPointer<QWidget> loadedView; // may end with the window that it was put into
};

} // namespace ui
