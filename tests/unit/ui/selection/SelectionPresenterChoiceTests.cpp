// What comes of a choice in the picker.
#include "SelectionPresenterFixture.h"
#include "qt/Input.h"

TEST_F(SelectionPresenter, AChosenApplicationIsProtectedAndDropsOutOfTheList)
{
    start();
    const auto notices = std::make_shared<int>(0); // the settings keep their listeners
    settings().addOnConfigurationChangeEvent([notices] { ++*notices; });

    choose("notes");
    EXPECT_EQ(settings().getLockedApplicationsBundleIds(), Names{"org.Notes"});
    EXPECT_EQ(*notices, 1);
    EXPECT_EQ(fake.dispatchQueues.global.size(), 1U);
    settle();

    EXPECT_EQ(rows(), (Names{"Calculator", "Zeta"}));
    EXPECT_TRUE(controller().isWindowVisible());
}

TEST_F(SelectionPresenter, TheFilterIsKeptWhenAChosenApplicationDropsOut)
{
    start();
    support::type(controller().window(), "t");
    ASSERT_EQ(rows(), (Names{"Calculator", "notes", "Zeta"}));
    support::type(controller().window(), "e");
    ASSERT_EQ(rows(), Names{"notes"});

    choose("notes");
    settle();

    EXPECT_EQ(rows(), Names{});
    EXPECT_EQ(controller().filterTextfieldOutlet->stringValue(), "te");
}

TEST_F(SelectionPresenter, SeveralAreChosenOneAfterTheOther)
{
    start();
    choose("Calculator");
    choose("Zeta");
    settle();

    EXPECT_EQ(rows(), Names{"notes"});
    EXPECT_EQ(settings().getLockedApplicationsBundleIds(), (Names{"org.Calculator", "org.Zeta"}));
}

TEST_F(SelectionPresenter, ChoosingTheSameTwiceBeforeTheListIsNewProtectsItOnce)
{
    start();
    choose("notes");
    choose("notes");
    settle();
    EXPECT_EQ(settings().getLockedApplicationsBundleIds(), Names{"org.Notes"});
}

TEST_F(SelectionPresenter, AnApplicationFromElsewhereIsChosenWhileItRuns)
{
    fake.workspace.running = {fakes::runningApplication(1, "org.Elsewhere", "Elsewhere")};
    start();
    EXPECT_EQ(rows(), (Names{"Calculator", "notes", "Zeta"}));

    setRunningOnly(true);
    choose("Elsewhere");
    settle();

    EXPECT_EQ(settings().getLockedApplicationsBundleIds(), Names{"org.Elsewhere"});
    EXPECT_EQ(rows(), Names{});
}
