// The help window with the page that is shipped, on a desktop in memory.
#pragma once

#include "fakes/FakePlatform.h"
#include "ui/windows/help/HelpWindowPresenter.h"

#include <QPushButton>
#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

class HelpWindowTest : public testing::Test
{
protected:
    HelpWindowTest() { fake.bundles.resources["Help.html"] = HELP_PAGE; }

    [[nodiscard]] ui::HelpWindowController& controller() const
    {
        return *presenter.helpWindowController;
    }

    [[nodiscard]] ui::PanelWindow& window() const { return controller().window(); }

    [[nodiscard]] ui::HelpPage& page() const
    {
        static_cast<void>(window()); // loaded by that
        return *controller().webviewOutlet;
    }

    void present()
    {
        presenter.present();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
    }

    fakes::FakePlatform fake;
    ui::HelpWindowPresenter presenter;
};
