// The password window on a desktop in memory, drawn on the toolkit's offscreen platform.
#pragma once

#include "fakes/FakePlatform.h"
#include "fakes/Secrets.h"
#include "qt/ThemedApplication.h"
#include "ui/windows/preferences/PreferencesWindowPresenter.h"

#include <QMessageBox>
#include <QPushButton>
#include <QTest>

#include <memory>
#include <optional>
#include <string>

#include <gtest/gtest.h>

class PreferencesWindowTest : public testing::Test
{
protected:
    PreferencesWindowTest()
    {
        presenter->onConfirmNewPassword = [this] { ++confirmations; };
    }

    void TearDown() override
    {
        presenter.reset();
        QApplication::setLayoutDirection(Qt::LeftToRight);
    }

    [[nodiscard]] ui::PreferencesWindowController& controller() const
    {
        return *presenter->preferencesWindowController;
    }

    [[nodiscard]] ui::PanelWindow& window() const { return controller().window(); }

    [[nodiscard]] ui::TextField& first() const { return *controller().passwordTextFieldOutlet; }

    [[nodiscard]] ui::TextField& second() const
    {
        return *controller().confirmPasswordTextFieldOutlet;
    }

    [[nodiscard]] QPushButton& button(const char* name) const
    {
        auto* const found = window().findChild<QPushButton*>(name);
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }

    void present()
    {
        presenter->present();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
    }

    void fill(const std::string& password, const std::string& confirmation) const
    {
        first().setStringValue(password);
        second().setStringValue(confirmation);
    }

    /// What has been typed is confirmed, and an alert that it leads to is shown.
    void confirm()
    {
        button("confirmButton").click();
        fake.dispatchQueues.runAll();
    }

    /// The alert on the window, or nothing.
    [[nodiscard]] QMessageBox* alert() const { return window().findChild<QMessageBox*>(); }

    [[nodiscard]] std::string alertText() const
    {
        return alert() == nullptr ? "" : alert()->informativeText().toStdString();
    }

    [[nodiscard]] std::optional<std::string> stored() const
    {
        return fakes::secret(fake, "Password");
    }

    fakes::FakePlatform fake;
    std::unique_ptr<ui::PreferencesWindowPresenter> presenter =
        std::make_unique<ui::PreferencesWindowPresenter>();
    int confirmations = 0;
};
