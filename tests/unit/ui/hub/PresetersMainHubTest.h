// The hub with all its presenters, on a desktop in memory and the toolkit's offscreen platform.
#pragma once

#include "fakes/FakePlatform.h"
#include "fakes/Secrets.h"
#include "qt/ThemedApplication.h"
#include "ui/hub/PresetersMainHub.h"

#include <QPushButton>
#include <QTest>

#include <memory>
#include <string>

#include <gtest/gtest.h>

class PresetersMainHubTest : public testing::Test
{
protected:
    PresetersMainHubTest() { fake.bundles.resources["Help.html"] = HELP_PAGE; }

    void TearDown() override { hub.reset(); }

    void setPassword() { fakes::storeSecret(fake, "Password", "secret"); }

    void present()
    {
        hub = std::make_unique<ui::PresetersMainHub>();
        hub->present();
    }

    /// The popover is there after the turns of the main queue that it takes.
    void showPopover()
    {
        hub->showPopover();
        fake.dispatchQueues.runAll();
    }

    [[nodiscard]] ui::PopupSystem& popupSystem() const
    {
        return *hub->popoverInterfacePresenter->popupSystem;
    }

    [[nodiscard]] bool popoverIsShown() const
    {
        EXPECT_EQ(popupSystem().active, popupSystem().popover.isVisible());
        return popupSystem().active;
    }

    // What the popover asks for, as its menu and its pages do.
    [[nodiscard]] ui::PopoverViewController& popover() const
    {
        return *hub->popoverInterfacePresenter->popoverViewController;
    }

    void askForPreferences() const { popover().changePreferencesMenuButtonClick(); }

    void askForHelp() const { popover().helpMenuButtonClick(); }

    void askForSelection() const { popover().lockAnotherAppMenuButtonClick(); }

    [[nodiscard]] QWidget& greeting() const
    {
        return hub->greetingsWindowPresenter->greetingsWindowController->window();
    }

    [[nodiscard]] QWidget& preferences() const
    {
        return hub->preferencesWindowPresenter->preferencesWindowController->window();
    }

    [[nodiscard]] QWidget& help() const
    {
        return hub->helpWindowPresenter->helpWindowController->window();
    }

    [[nodiscard]] QWidget& selection() const
    {
        return hub->selectApplicationsWindowPresenter->applicationsSelectWindowController->window();
    }

    static void click(const QWidget& window, const char* button)
    {
        auto* const found = window.findChild<QPushButton*>(button);
        ASSERT_NE(found, nullptr) << button;
        found->click();
    }

    /// In the preferences, which are open.
    void confirmNewPassword() const
    {
        auto& controller = *hub->preferencesWindowPresenter->preferencesWindowController;
        controller.passwordTextFieldOutlet->setStringValue("secret");
        controller.confirmPasswordTextFieldOutlet->setStringValue("secret");
        click(preferences(), "confirmButton");
    }

    fakes::FakePlatform fake;
    std::unique_ptr<ui::PresetersMainHub> hub;
};
