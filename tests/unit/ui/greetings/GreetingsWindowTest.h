// The greeting on a desktop in memory, drawn on the toolkit's offscreen platform.
#pragma once

#include "fakes/FakePlatform.h"
#include "qt/ThemedApplication.h"
#include "ui/windows/greetings/GreetingsWindowPresenter.h"

#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

class GreetingsWindowTest : public testing::Test
{
protected:
    void TearDown() override { QApplication::setLayoutDirection(Qt::LeftToRight); }

    [[nodiscard]] ui::PanelWindow& window() const { return controller().window(); }

    [[nodiscard]] ui::GreetingsWindowController& controller() const
    {
        return *presenter.greetingsWindowController;
    }

    [[nodiscard]] QPushButton& button(const char* name) const
    {
        auto* const found = window().findChild<QPushButton*>(name);
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }

    void present()
    {
        presenter.present();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
    }

    /// Sets the callbacks as the owner does, and counts their calls.
    void countRequests()
    {
        presenter.onSetupPasswordRequest = [this] { ++setupRequests; };
        presenter.onHelpRequest = [this] { ++helpRequests; };
    }

    fakes::FakePlatform fake;
    ui::GreetingsWindowPresenter presenter;
    int setupRequests = 0;
    int helpRequests = 0;
};
