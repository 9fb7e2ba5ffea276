#include "SelectionWindowTest.h"

namespace {

using SelectionFilter = SelectionWindowTest;

} // namespace

TEST_F(SelectionFilter, ShowsEveryApplicationWhileNothingIsTyped)
{
    show({"Beta", "alpha"});
    EXPECT_EQ(rows(), (Names{"Beta", "alpha"}));
    EXPECT_EQ(shownRows(), rows());
}

TEST_F(SelectionFilter, FindsNamesWhateverTheirCase)
{
    show({"calculator", "Notes", "CALENDAR", "Écran"});

    filter("CAL");
    EXPECT_EQ(rows(), (Names{"calculator", "CALENDAR"}));
    filter("nOtEs");
    EXPECT_EQ(rows(), Names{"Notes"});
    filter("éCR");
    EXPECT_EQ(rows(), Names{"Écran"});
}

TEST_F(SelectionFilter, FindsTheTextAnywhereInTheNameAndKeepsTheOrder)
{
    show({"Zeta Tool", "Tool", "Other", "A Toolbox"});

    filter("tool");

    EXPECT_EQ(rows(), (Names{"Zeta Tool", "Tool", "A Toolbox"}));
    EXPECT_EQ(shownRows(), rows());
}

TEST_F(SelectionFilter, DoesNotSearchTheIdentifier)
{
    controller.showServiceWindow({entity("Files", "org.gnome.Nautilus")}, true, false);

    filter("nautilus");

    EXPECT_EQ(rows(), Names{});
}

TEST_F(SelectionFilter, OfSpacesMatchesOnlyNamesWithThatManySpaces)
{
    show({"Plain", "With one", "With  two"});

    filter(" ");
    EXPECT_EQ(rows(), (Names{"With one", "With  two"}));
    filter("  ");
    EXPECT_EQ(rows(), Names{"With  two"});
}

TEST_F(SelectionFilter, GoesOnWithEveryCharacterTyped)
{
    show({"Terminal", "Tetris", "Text"});
    field().setFocus();

    support::type(controller.window(), "te");
    EXPECT_EQ(rows(), (Names{"Terminal", "Tetris", "Text"}));
    support::type(controller.window(), "t");
    EXPECT_EQ(rows(), Names{"Tetris"});
    support::press(field(), Qt::Key_Backspace);
    EXPECT_EQ(rows(), (Names{"Terminal", "Tetris", "Text"}));
}

TEST_F(SelectionFilter, IsKeptAndAppliedToANewList)
{
    show({"Calculator", "Notes"});
    filter("no");

    controller.displayApplicationsList(entities({"Calculator", "Novel", "Notes"}));

    EXPECT_EQ(rows(), (Names{"Novel", "Notes"}));
    EXPECT_EQ(field().stringValue(), "no");
}

TEST_F(SelectionFilter, IsKeptAndAppliedWhenTheWindowIsShownAgain)
{
    show({"Calculator", "Notes"});
    filter("no");

    controller.showServiceWindow(entities({"Calculator", "Novel"}), true, false);

    EXPECT_EQ(rows(), Names{"Novel"});
    EXPECT_EQ(shownRows(), Names{"Novel"});
}

TEST_F(SelectionFilter, IsNoneWhileTheWindowIsNotLoaded)
{
    controller.displayApplicationsList(entities({"Calculator"}));

    EXPECT_EQ(rows(), Names{"Calculator"});
    EXPECT_FALSE(controller.isWindowLoaded());
}

TEST_F(SelectionFilter, StartsTheListFromItsTop)
{
    show({"Alpha", "Beta", "Betamax", "Gamma"});
    table().setCurrentRow(3);

    filter("bet");

    EXPECT_EQ(table().currentRow(), 0);
}

TEST_F(SelectionFilter, KeepsTheKeysInTheFieldWhileTyping)
{
    show({"Alpha", "Beta"});
    field().setFocus();

    support::type(controller.window(), "alx");
    controller.displayApplicationsList(entities({"Alpha"}));

    EXPECT_EQ(controller.window().focusWidget(), &field());
    EXPECT_EQ(field().stringValue(), "alx");
}

TEST_F(SelectionFilter, IsClearedByItsButtonWhichGivesTheKeysToTheList)
{
    show({"Alpha", "Beta"});
    filter("beta");
    ui::ImageButtonView& clear = *controller.blurSearchTextfieldButtonOutlet;
    ASSERT_TRUE(clear.isVisible());

    support::click(clear);

    EXPECT_EQ(field().stringValue(), "");
    EXPECT_EQ(rows(), (Names{"Alpha", "Beta"}));
    EXPECT_EQ(shownRows(), rows());
    EXPECT_EQ(controller.window().focusWidget(), &table());
}

TEST_F(SelectionFilter, HasAClearButtonOnlyWhereThereIsSomethingToClear)
{
    show({"Alpha"});
    ui::ImageButtonView& clear = *controller.blurSearchTextfieldButtonOutlet;
    EXPECT_FALSE(clear.isVisible());
    EXPECT_EQ(clear.id, 0);
    EXPECT_TRUE(clear.animated);

    filter("x");
    EXPECT_TRUE(clear.isVisible());
    field().selectAll();
    support::press(field(), Qt::Key_Backspace);
    EXPECT_FALSE(clear.isVisible());
}
