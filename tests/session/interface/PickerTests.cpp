// The picker of applications.

#include "session/interface/InterfaceTest.h"

#include <csignal>

namespace agent {

class Picker : public InterfaceTest
{
protected:
    void SetUp() override
    {
        InterfaceTest::SetUp();
        addApplication("garden", "Garden");
        addApplication("ledger", "Ledger");
        addApplication("console", "Console", "System;TerminalEmulator;");
        startWithPassword();
        unlock();
        user->activate(screens::ADD);
        user->waitFor(person::row("Garden", screens::PICKER));
    }

    void filter(const std::string& text)
    {
        user->click(screens::FILTER);
        user->waitForFocusOn(screens::FILTER);
        user->type(text);
    }

    void waitForRows(const std::vector<std::string>& expected)
    {
        user->waitUntil("the list is as it should be", [&] { return user->rows() == expected; });
    }
};

TEST_F(Picker, ListsApplicationsByNameAndHidesThePopover)
{
    EXPECT_EQ(user->rows(), (std::vector<std::string>{"Console", "Garden", "Ledger"}));
    EXPECT_FALSE(user->sees(person::window(screens::POPOVER)));
}

TEST_F(Picker, AClickOnARowProtects)
{
    filter("garden");
    waitForRows({"Garden"});

    user->click(person::row("Garden", screens::PICKER));

    user->waitForEndOf(person::row("Garden", screens::PICKER));
    waitForSetting("Applications", "garden;");
}

TEST_F(Picker, TheButtonOfARowProtects)
{
    filter("ledg");
    waitForRows({"Ledger"});

    user->clickAtEndOf(person::row("Ledger", screens::PICKER));

    user->waitForEndOf(person::row("Ledger", screens::PICKER));
    waitForSetting("Applications", "ledger;");
    openPopover();
    unlock();
    user->waitFor(person::row("Ledger", screens::POPOVER));
}

TEST_F(Picker, TheFilterLooksForThePartOfANameInAnyCase)
{
    filter("ARDE");
    waitForRows({"Garden"});

    user->type("x");
    waitForRows({});

    user->activate(screens::CLEAR_FILTER);
    user->waitFor(person::row("Ledger", screens::PICKER));
    EXPECT_EQ(user->find(screens::FILTER).text(), "");
}

TEST_F(Picker, RunningApplicationsComeAndGoWhileTheyAreListed)
{
    user->activate(screens::RUNNING_ONLY);
    user->waitForEndOf(person::row("Garden", screens::PICKER));

    desktop::ChildProcess garden = startApplication("garden");
    user->waitFor(person::row("Garden", screens::PICKER));

    garden.signal(SIGTERM);
    user->waitForEndOf(person::row("Garden", screens::PICKER));

    user->activate(screens::RUNNING_ONLY);
    user->waitFor(person::row("Ledger", screens::PICKER));
}

TEST_F(Picker, AdministrativeApplicationsAreOfferedUnlessTheyAreLockedTogether)
{
    user->waitFor(person::row("Console", screens::PICKER)); // the option was off

    user->activate(screens::ADMINISTRATIVE);

    user->waitForEndOf(person::row("Console", screens::PICKER));
    waitForSetting("Administrative", "1");
}

TEST_F(Picker, BothOptionsAreExplained)
{
    user->activate(screens::ABOUT_ADMINISTRATIVE);
    answerAlert(
        "Lock administrative applications",
        "With administrative applications users that are sharing your computer can (but it will be "
        "hard to) stop Tarvel from protecting your apps. \n\nThe administrative applications are: "
        "Terminal, Activity Monitor and Keychain Access."
    );
    user->activate(screens::ABOUT_RUNNING_ONLY);
    answerAlert(
        "List Running Applications Only",
        "By default, Tarvel will list the apps installed under your Applications folder. If you "
        "want to lock an app installed somewhere else, just check this option and start (run) the "
        "app."
    );
}

} // namespace agent
