// The popover: its gate, its list, its switches, its menu.

#include "desktop/TemporaryFolder.h"
#include "session/interface/InterfaceTest.h"

#include <algorithm>
#include <csignal>

namespace agent {

class PopoverUse : public InterfaceTest
{
protected:
    [[nodiscard]] std::filesystem::path autostartFolder() const
    {
        return session->desk.home() / ".config/autostart";
    }

    [[nodiscard]] std::filesystem::path autostartFile() const
    {
        return autostartFolder() / "com.quorvent.OlvoHelper.desktop";
    }

    /// Sees the page shake and come to rest as it was.
    void enterWrongPassword(const std::string& password)
    {
        const desktop::Rectangle atRest = user->placeOf(screens::GATE);
        enterAtGate(password);
        user->waitUntil("the page shakes", [&] {
            return user->find(screens::GATE).place() != atRest;
        });
        user->waitUntil("the page rests", [&] {
            return user->find(screens::GATE).place() == atRest;
        });
        EXPECT_FALSE(user->sees(screens::CONTENT));
    }

    /// Whether anything that assistive tools can find has that in its name.
    [[nodiscard]] bool isToldOf(const std::string& text) const
    {
        const std::vector<std::string> names = user->everyName();
        return std::any_of(names.begin(), names.end(), [&text](const std::string& name) {
            return name.find(text) != std::string::npos;
        });
    }

    [[nodiscard]] bool isOn(const person::Control& checkBox) const
    {
        return user->find(checkBox).is(accessibility::State::Checked);
    }
};

TEST_F(PopoverUse, NothingIsShownWithoutThePassword)
{
    startWithPassword();
    EXPECT_FALSE(user->sees(person::window(screens::GREETING)));
    user->waitFor(screens::GATE);
    EXPECT_FALSE(user->sees(screens::CONTENT));

    enterWrongPassword("open sesam");
    enterWrongPassword("");

    unlock();
    EXPECT_FALSE(user->sees(screens::GATE));
}

TEST_F(PopoverUse, WhatIsProtectedIsReadByNobodyBehindTheGate)
{
    addApplication("garden", "Garden");
    startWithPassword({"garden"});
    for (int opening = 0; opening < 3; ++opening) {
        user->waitForFocusOn(screens::GATE);
        EXPECT_FALSE(isToldOf("Garden"));

        unlock();
        user->waitFor(person::row("Garden", screens::POPOVER));
        EXPECT_TRUE(isToldOf("Garden"));

        user->press(desktop::KEY_ESCAPE);
        user->waitForEndOf(person::window(screens::POPOVER));
        EXPECT_FALSE(isToldOf("Garden"));
        openPopover();
    }
}

TEST_F(PopoverUse, EveryOpeningAsksForThePassword)
{
    startWithPassword();
    unlock();
    user->press(desktop::KEY_ESCAPE);
    user->waitForEndOf(person::window(screens::POPOVER));

    openPopover();

    user->waitForFocusOn(screens::GATE);
    EXPECT_FALSE(user->sees(screens::CONTENT));
}

TEST_F(PopoverUse, AProtectedApplicationIsRemovedByItsButtonAndByItsKey)
{
    addApplication("garden", "Garden");
    addApplication("ledger", "Ledger");
    startWithPassword({"garden", "ledger"});
    unlock();
    user->waitFor(person::row("Garden", screens::POPOVER));
    EXPECT_EQ(user->rows(), (std::vector<std::string>{"Garden", "Ledger"}));

    user->clickAtEndOf(person::row("Garden", screens::POPOVER));

    user->waitForEndOf(person::row("Garden", screens::POPOVER));
    waitForSetting("Applications", "ledger;");
    EXPECT_EQ(session->countOf("removeApplicationRequest: Garden"), 1U);

    user->waitForFocusOn(person::row("Ledger", screens::POPOVER));
    user->press(desktop::KEY_DELETE);

    user->waitFor(screens::NOTHING_PROTECTED);
    waitForSetting("Applications", "");
}

TEST_F(PopoverUse, TheSwitchOfTheProtectionIsKept)
{
    startWithPassword();
    unlock();
    EXPECT_TRUE(isOn(screens::ACTIVE));

    user->activate(screens::ACTIVE);
    waitForSetting("Active", "0");
    EXPECT_FALSE(isOn(screens::ACTIVE));

    user->activate(screens::ACTIVE);
    waitForSetting("Active", "1");
    EXPECT_TRUE(isOn(screens::ACTIVE));
}

TEST_F(PopoverUse, TheAutostartFileComesAndGoesWithItsSwitch)
{
    startWithPassword();
    unlock();
    EXPECT_FALSE(isOn(screens::START_AT_LOGIN));

    user->activate(screens::START_AT_LOGIN);
    waitForSetting("LoginStart", "1");
    const std::string entry = desktop::readFile(autostartFile());
    EXPECT_NE(entry.find(AgentSession::helperPath().string()), std::string::npos) << entry;

    user->activate(screens::START_AT_LOGIN);
    waitForSetting("LoginStart", "0");
    EXPECT_FALSE(std::filesystem::exists(autostartFile()));
}

TEST_F(PopoverUse, AnAutostartFolderThatFailsIsSaidAndNothingIsStored)
{
    desktop::writeFile(autostartFolder(), "no folder");
    startWithPassword();
    unlock();

    user->activate(screens::START_AT_LOGIN);

    answerAlert(
        "There was an error",
        "Tarvel could not be added to the login items. You can check your system's security "
        "settings or you can restart your Mac and retry"
    );
    EXPECT_FALSE(setting("LoginStart").has_value());
    EXPECT_EQ(session->countOf("startAtLoginConfigurationChanged"), 1U);
}

TEST_F(PopoverUse, AChangedPasswordCountsFromThenOn)
{
    startWithPassword();
    unlock();
    choose(screens::CHANGE_PASSWORD);
    user->waitForFocusOn(screens::NEW_PASSWORD);
    user->waitForEndOf(person::window(screens::POPOVER));

    enterNewPassword("another", "another");

    user->waitFor(screens::GATE);
    enterWrongPassword(PASSWORD);
    enterAtGate("another");
    user->waitFor(screens::CONTENT);
    waitForSetting("Password", "another");
}

TEST_F(PopoverUse, TheMenuOpensHelpAndThePicker)
{
    startWithPassword();
    unlock();
    choose(screens::HELP_AND_SUPPORT);
    user->waitFor(person::window(screens::HELP));
    user->waitForEndOf(person::window(screens::POPOVER));

    openPopover();
    unlock();
    choose(screens::LOCK_OTHERS);
    user->waitFor(person::window(screens::PICKER));
}

TEST_F(PopoverUse, QuittingWaitsForAPasswordThatTheKeyringHasNotTakenYet)
{
    startWithPassword();
    user->waitUntil("the helper runs", [this] { return session->helpers().size() == 1; });
    unlock();
    choose(screens::CHANGE_PASSWORD);
    user->waitForFocusOn(screens::NEW_PASSWORD);
    desk().keyring().process().signal(SIGSTOP);
    enterNewPassword("another", "another");
    enterAtGate("another");
    user->waitFor(screens::CONTENT);

    choose(screens::QUIT);
    user->waitUntil("the helper ends", [this] { return session->helpers().empty(); });
    desk().keyring().process().signal(SIGCONT);

    EXPECT_EQ(session->process().waitForExitStatus(PATIENCE), 0);
    EXPECT_EQ(setting("Password"), "another");
}

TEST_F(PopoverUse, AfterAStartByTheHelperASecondStartOpensIt)
{
    session->protect({});
    session->startAgent();
    ASSERT_TRUE(session->waitForLine("Monitoring services started"));
    EXPECT_FALSE(user->sees(person::window(screens::POPOVER)));

    openPopover();

    user->waitForFocusOn(screens::GATE);
    EXPECT_FALSE(user->sees(screens::CONTENT));
}

TEST_F(PopoverUse, WithoutAStatusAreaAFurtherStartBringsItInFrontOfTheOtherWindows)
{
    startWithPassword();
    unlock();
    choose(screens::HELP_AND_SUPPORT);
    user->waitForFocusOn(screens::HELP_PAGE);
    openPopover();
    user->click(screens::HELP_PAGE);
    user->waitForFocusOn(screens::HELP_PAGE);

    openPopover();

    user->waitForFocusOn(screens::GATE);
    user->type(PASSWORD); // it would be elsewhere if the keyboard went back
    user->press(desktop::KEY_RETURN);
    user->waitFor(screens::CONTENT);
}

TEST_F(PopoverUse, WithoutAStatusAreaItClosesWhereTheUserGoesElsewhere)
{
    addApplication("garden", "Garden");
    startWithPassword();
    unlock();

    const desktop::ChildProcess garden = startApplication("garden");

    user->waitForEndOf(person::window(screens::POPOVER));
    openPopover();
    user->waitFor(screens::GATE);
    EXPECT_FALSE(user->sees(screens::CONTENT));
}

TEST_F(PopoverUse, OneLineSaysThatThereIsNoStatusArea)
{
    startWithPassword();
    user->waitForFocusOn(screens::GATE);
    user->press(desktop::KEY_ESCAPE);
    user->waitForEndOf(person::window(screens::POPOVER));
    openPopover();

    const std::string errors = session->errors();

    const std::size_t said = errors.find("no status area");
    ASSERT_NE(said, std::string::npos) << errors;
    EXPECT_EQ(errors.find("no status area", said + 1), std::string::npos) << errors;
}

TEST_F(PopoverUse, QuittingEndsAgentAndHelper)
{
    startWithPassword();
    user->waitUntil("the helper runs", [this] { return session->helpers().size() == 1; });
    unlock();

    choose(screens::QUIT);

    EXPECT_EQ(session->process().waitForExitStatus(PATIENCE), 0);
    user->waitUntil("the helper ends", [this] { return session->helpers().empty(); });
    EXPECT_TRUE(session->agents().empty());
}

} // namespace agent
