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
        user->activate(texts::ADD);
        user->waitFor(person::row("Garden", texts::PICKER));
    }

    void filter(const std::string& text)
    {
        user->click(texts::FILTER);
        user->waitForFocusOn(texts::FILTER);
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
    EXPECT_FALSE(user->sees(person::window(texts::POPOVER)));
}

TEST_F(Picker, AClickOnARowProtects)
{
    filter("garden");
    waitForRows({"Garden"});

    user->click(person::row("Garden", texts::PICKER));

    user->waitForEndOf(person::row("Garden", texts::PICKER));
    waitForSetting("Applications", "garden;");
}

TEST_F(Picker, TheButtonOfARowProtects)
{
    filter("ledg");
    waitForRows({"Ledger"});

    user->clickAtEndOf(person::row("Ledger", texts::PICKER));

    user->waitForEndOf(person::row("Ledger", texts::PICKER));
    waitForSetting("Applications", "ledger;");
    openPopover();
    unlock();
    user->waitFor(person::row("Ledger", texts::POPOVER));
}

TEST_F(Picker, TheFilterLooksForThePartOfANameInAnyCase)
{
    filter("ARDE");
    waitForRows({"Garden"});

    user->type("x");
    waitForRows({});

    user->activate(texts::CLEAR_FILTER);
    user->waitFor(person::row("Ledger", texts::PICKER));
    EXPECT_EQ(user->find(texts::FILTER).text(), "");
}

TEST_F(Picker, RunningApplicationsComeAndGoWhileTheyAreListed)
{
    user->activate(texts::RUNNING_ONLY);
    user->waitForEndOf(person::row("Garden", texts::PICKER));

    desktop::ChildProcess garden = startApplication("garden");
    user->waitFor(person::row("Garden", texts::PICKER));

    garden.signal(SIGTERM);
    user->waitForEndOf(person::row("Garden", texts::PICKER));

    user->activate(texts::RUNNING_ONLY);
    user->waitFor(person::row("Ledger", texts::PICKER));
}

TEST_F(Picker, AdministrativeApplicationsAreOfferedUnlessTheyAreLockedTogether)
{
    user->waitFor(person::row("Console", texts::PICKER)); // the option was off

    user->activate(texts::ADMINISTRATIVE);

    user->waitForEndOf(person::row("Console", texts::PICKER));
    waitForSetting("Administrative", "1");
}

TEST_F(Picker, BothOptionsAreExplained)
{
    user->activate(texts::ABOUT_ADMINISTRATIVE);
    answerAlert(
        "Lock administrative applications",
        "With administrative applications users that are sharing your computer can (but it will be "
        "hard to) stop Tarvel from protecting your apps. \n\nThe administrative applications are: "
        "Terminal, Activity Monitor and Keychain Access."
    );
    user->activate(texts::ABOUT_RUNNING_ONLY);
    answerAlert(
        "List Running Applications Only",
        "By default, Tarvel will list the apps installed under your Applications folder. If you "
        "want to lock an app installed somewhere else, just check this option and start (run) the "
        "app."
    );
}

} // namespace agent
