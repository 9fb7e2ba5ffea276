// The part of the popover's controller that chooses what is seen.
#include "platform/Fatal.h"
#include "ui/popover/PopoverViewController.h"

#include <QLayout>

namespace ui {

void PopoverViewController::viewWillAppear()
{
    showPage();
}

void PopoverViewController::viewDidDisappear()
{
    state = State::PasswordRequired;
    if (optionsMenu != nullptr) {
        optionsMenu->close();
    }
    if (isViewLoaded()) {
        hideAll(); // nothing of the content stays behind, and nothing of what was typed
    }
}

void PopoverViewController::showPage()
{
    switch (state) {
    case State::NoPassword:
        showNoPasswordPage();
        return;
    case State::PasswordRequired:
        showPasswordPage();
        return;
    case State::Unlocked:
        showContent();
        return;
    }
    platform::fatal("the popover has no such state");
}

void PopoverViewController::hideAll()
{
    for (QWidget* subview : view().findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        subview->hide();
        subview->setEnabled(false); // assistive tools reach what is hidden as well
    }
    removePage(noPasswordViewController.get());
    removePage(requestPasswordViewController.get());
}

void PopoverViewController::showNoPasswordPage()
{
    hideAll();
    if (noPasswordViewController == nullptr) {
        noPasswordViewController = std::make_unique<NoPasswordViewController>();
        noPasswordViewController->onHelpRequest = onHelpRequest;
        noPasswordViewController->onPasswordSetupRequest = onChangePreferencesRequest;
    }
    addPage(*noPasswordViewController);
}

void PopoverViewController::showPasswordPage()
{
    hideAll();
    if (requestPasswordViewController == nullptr) {
        requestPasswordViewController = std::make_unique<RequestPasswordViewController>();
        requestPasswordViewController->onHelpRequest = onHelpRequest;
        requestPasswordViewController->onPasswordEntered = onPasswordEntered;
    }
    addPage(*requestPasswordViewController);
}

void PopoverViewController::showContent()
{
    hideAll();
    for (QWidget* subview : view().findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        subview->setEnabled(true);
        subview->show();
    }
    showEmptyView();
    if (lockedApplications.empty()) {
        addApplicationButtonOutlet->setFocus();
    } else {
        applicationsTableViewOutlet->setFocus();
    }
}

void PopoverViewController::addPage(ViewController& page)
{
    view().layout()->addWidget(&page.view());
    page.view().setEnabled(true);
    page.view().show();
    page.viewWillAppear();
}

void PopoverViewController::removePage(ViewController* page)
{
    if (page == nullptr || !page->isViewLoaded() || page->view().parentWidget() == nullptr) {
        return;
    }
    view().layout()->removeWidget(&page->view());
    page->view().setParent(nullptr);
    page->viewDidDisappear();
}

void PopoverViewController::showEmptyView()
{
    noItemViewOutlet->setVisible(lockedApplications.empty());
}

} // namespace ui
