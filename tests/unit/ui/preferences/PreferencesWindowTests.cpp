#include "PreferencesWindowTest.h"

#include <utility>
#include <vector>

using storage::ConfigurationAndPreferencesService;

namespace {

const testing::Environment* const ENVIRONMENT =
    testing::AddGlobalTestEnvironment(new support::ThemedEnvironment);

constexpr auto EMPTY = "The password cannot be empty";
constexpr auto TOO_SHORT = "The password cannot be smaller than 3 characters";
constexpr auto MISMATCH = "The passwords do not match";

using PreferencesWindow = PreferencesWindowTest;

} // namespace

TEST_F(PreferencesWindow, IsNotLoadedBeforeItIsPresented)
{
    EXPECT_FALSE(controller().isWindowLoaded());
    EXPECT_EQ(
        &presenter->configurationAndPreferencesService,
        &ConfigurationAndPreferencesService::sharedInstance()
    );
}

TEST_F(PreferencesWindow, PresentingBringsItToTheFrontWithTheCaretInTheFirstField)
{
    present();

    EXPECT_TRUE(window().isActiveWindow());
    EXPECT_EQ(QApplication::focusWidget(), &first());
}

TEST_F(PreferencesWindow, ConfirmingTwoEmptyFieldsSaysSoAndStaysOpen)
{
    present();
    confirm();

    ASSERT_NE(alert(), nullptr);
    EXPECT_EQ(alert()->text(), "There was an error..");
    EXPECT_EQ(alertText(), EMPTY);
    EXPECT_EQ(alert()->windowModality(), Qt::WindowModal);
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(stored(), std::nullopt);
    EXPECT_EQ(confirmations, 0);
}

TEST_F(PreferencesWindow, WhatIsNotAcceptedIsSaidAndKeptAsItWasTyped)
{
    const std::vector<std::pair<std::pair<std::string, std::string>, std::string>> cases{
        {{"", "secret"}, EMPTY},
        {{"x", "x"}, TOO_SHORT},
        {{"secret", "Secret"}, MISMATCH},
        {{"secret", "secret "}, MISMATCH},
        {{"secret", ""}, MISMATCH},
    };
    present();
    for (const auto& [typed, message] : cases) {
        fill(typed.first, typed.second);
        confirm();
        EXPECT_EQ(alertText(), message);
        delete alert();
        EXPECT_EQ(first().stringValue(), typed.first);
        EXPECT_EQ(second().stringValue(), typed.second);
        EXPECT_TRUE(window().isVisible());
    }
    EXPECT_EQ(stored(), std::nullopt);
    EXPECT_EQ(confirmations, 0);
}

TEST_F(PreferencesWindow, AfterTheAlertWhatWasTypedCanBeCorrected)
{
    present();
    fill("secret", "secret2");
    confirm();
    ASSERT_NE(alert(), nullptr);
    QTest::keyClick(alert(), Qt::Key_Return);
    ASSERT_TRUE(QTest::qWaitFor([this] { return alert() == nullptr; }));

    second().setStringValue("secret");
    confirm();
    EXPECT_EQ(stored(), "secret");
    EXPECT_EQ(confirmations, 1);
}

TEST_F(PreferencesWindow, ATwoCharacterPasswordTypedTwiceIsStoredAndToldOnce)
{
    int changes = 0;
    const auto counting = std::make_shared<int*>(&changes);
    ConfigurationAndPreferencesService::sharedInstance().addOnConfigurationChangeEvent(
        [counted = std::weak_ptr(counting)] {
            if (const auto counter = counted.lock()) {
                ++**counter;
            }
        }
    );
    bool wasOpen = true;
    presenter->onConfirmNewPassword = [&] {
        ++confirmations;
        wasOpen = window().isVisible();
    };
    present();
    fill("ab", "ab");
    confirm();

    EXPECT_EQ(stored(), "ab");
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(confirmations, 1);
    EXPECT_FALSE(wasOpen); // the window is closed before anybody is told
    EXPECT_FALSE(window().isVisible());
    EXPECT_EQ(alert(), nullptr);
}

TEST_F(PreferencesWindow, APasswordIsStoredAsItWasTyped)
{
    present();
    fill("  \xC3\xA9 ", "  \xC3\xA9 ");
    confirm();

    EXPECT_EQ(stored(), "  \xC3\xA9 ");
}

TEST_F(PreferencesWindow, ANewPasswordTakesTheOldOnesPlaceWithoutAListener)
{
    fakes::storeSecret(fake, "Password", "old");
    presenter->onConfirmNewPassword = nullptr;
    present();
    fill("new one", "new one");
    confirm();

    EXPECT_EQ(stored(), "new one");
    EXPECT_FALSE(window().isVisible());
}

TEST_F(PreferencesWindow, ReturnInTheFirstFieldSubmitsNothing)
{
    present();
    fill("secret", "secret");
    QTest::keyClick(&first(), Qt::Key_Return);
    QTest::keyClick(&first(), Qt::Key_Enter);
    fake.dispatchQueues.runAll();

    EXPECT_EQ(stored(), std::nullopt);
    EXPECT_EQ(alert(), nullptr);
    EXPECT_TRUE(window().isVisible());
}

TEST_F(PreferencesWindow, ReturnInTheConfirmationSubmits)
{
    present();
    fill("secret", "secret");
    QTest::keyClick(&second(), Qt::Key_Return);

    EXPECT_EQ(stored(), "secret");
    EXPECT_EQ(confirmations, 1);
}

TEST_F(PreferencesWindow, LeavingTheConfirmationInAnotherWaySubmitsNothing)
{
    present();
    fill("secret", "secret");
    second().setFocus();
    QTest::keyClick(&second(), Qt::Key_Tab);
    second().setFocus();
    QTest::keyClick(&second(), Qt::Key_Backtab);
    second().setFocus();
    first().setFocus();

    EXPECT_EQ(stored(), std::nullopt);
    EXPECT_TRUE(window().isVisible());
}

TEST_F(PreferencesWindow, CancelClosesItAndStoresNothing)
{
    present();
    fill("secret", "secret");
    button("cancelButton").click();

    EXPECT_FALSE(window().isVisible());
    EXPECT_EQ(stored(), std::nullopt);
    EXPECT_EQ(confirmations, 0);
}

TEST_F(PreferencesWindow, EscapeIsACancel)
{
    present();
    fill("secret", "secret");
    QTest::keyClick(&second(), Qt::Key_Escape);

    EXPECT_FALSE(window().isVisible());
    EXPECT_EQ(stored(), std::nullopt);
}

TEST_F(PreferencesWindow, BetweenShowingsTheFieldsKeepTheirTextUntilItIsFocused)
{
    present();
    fill("one", "two");
    second().setFocus();
    presenter->stopService();
    EXPECT_FALSE(window().isVisible());

    presenter->present();
    EXPECT_EQ(first().stringValue(), "one");
    EXPECT_EQ(second().stringValue(), "two");

    presenter->focus();
    EXPECT_EQ(first().stringValue(), "");
    EXPECT_EQ(second().stringValue(), "");
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
    EXPECT_EQ(QApplication::focusWidget(), &first());
}

TEST_F(PreferencesWindow, ThePresentersErrorIsAnAlertOnTheWindow)
{
    present();
    presenter->showErrorMessage("It did not work");
    EXPECT_EQ(alert(), nullptr); // it comes later, on the main queue
    fake.dispatchQueues.runAll();

    ASSERT_NE(alert(), nullptr);
    EXPECT_EQ(alert()->text(), "There was an error..");
    EXPECT_EQ(alertText(), "It did not work");
}

TEST_F(PreferencesWindow, UnsetCallbacksDropWhatIsDone)
{
    controller().showServiceWindow();
    fill("secret", "secret");
    controller().confirmButtonClick();
    controller().cancelButtonClick();

    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(stored(), std::nullopt);
}
