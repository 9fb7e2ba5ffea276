// What of the popover is seen: its content, or one page in place of it, or nothing. What is not
// seen can be used by nobody, assistive tools included; they know of it all the same. Main thread
// only.
#pragma once

#include "ui/views/ViewController.h"

namespace ui {

class PopoverPages
{
public:
    /// The view's direct subviews are the content. It must outlive this, and every page the time
    /// that it is shown.
    explicit PopoverPages(QWidget& view);

    void hideAll();
    void show(ViewController& wanted);
    void showContent();

    [[nodiscard]] bool shows(const ViewController* wanted) const
    {
        return wanted != nullptr && page == wanted;
    }

private:
    void removePage();

    QWidget& view;
    ViewController* page = nullptr; // that is in the view
};

} // namespace ui
