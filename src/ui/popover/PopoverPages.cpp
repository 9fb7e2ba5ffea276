#include "ui/popover/PopoverPages.h"

#include <QLayout>

#include <utility>

namespace ui {

PopoverPages::PopoverPages(QWidget& view) : view(view) {}

void PopoverPages::hideAll()
{
    for (QWidget* subview : view.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        subview->hide();
        subview->setEnabled(false); // assistive tools reach what is hidden as well
    }
    removePage();
}

void PopoverPages::show(ViewController& wanted)
{
    hideAll();
    page = &wanted;
    view.layout()->addWidget(&page->view());
    page->view().setEnabled(true);
    page->view().show();
    page->viewWillAppear();
}

void PopoverPages::showContent()
{
    hideAll();
    for (QWidget* subview : view.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        subview->setEnabled(true);
        subview->show();
    }
}

void PopoverPages::removePage()
{
    ViewController* const former = std::exchange(page, nullptr);
    if (former == nullptr) {
        return;
    }
    view.layout()->removeWidget(&former->view());
    former->view().setParent(nullptr);
    former->viewDidDisappear();
}

} // namespace ui
