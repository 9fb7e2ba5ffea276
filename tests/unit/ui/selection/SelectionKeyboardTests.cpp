#include "SelectionWindowTest.h"

namespace {

class SelectionKeyboard : public SelectionWindowTest
{
protected:
    void press(int key, const QString& text = QString(), Qt::KeyboardModifiers modifiers = {})
    {
        support::press(*controller.window().focusWidget(), key, text, modifiers);
        settle();
    }

    QWidget* focused() { return controller.window().focusWidget(); }
};

} // namespace

TEST_F(SelectionKeyboard, TheFilterFieldHasTheKeysAtFirst)
{
    show({"Alpha"});
    EXPECT_EQ(focused(), &field());
}

TEST_F(SelectionKeyboard, OpeningAgainSelectsWhatWasLookedForBefore)
{
    show({"Alpha"});
    filter("alp");
    table().setFocus();

    controller.closeServiceWindow();
    controller.focus();

    EXPECT_EQ(focused(), &field());
    EXPECT_EQ(field().selectedText(), "alp");
}

TEST_F(SelectionKeyboard, BringingAnOpenWindowForwardLeavesTheKeysWhereTheyAre)
{
    show({"Alpha"});
    table().setFocus();

    controller.focus();

    EXPECT_EQ(focused(), &table());
}

TEST_F(SelectionKeyboard, DownLeadsFromTheFieldIntoTheListAndUpBack)
{
    show({"Alpha", "Beta"});

    press(Qt::Key_Down);
    EXPECT_EQ(focused(), &table());
    EXPECT_EQ(table().currentRow(), 0);
    press(Qt::Key_Down);
    EXPECT_EQ(table().currentRow(), 1);
    press(Qt::Key_Up);
    EXPECT_EQ(table().currentRow(), 0);
    press(Qt::Key_Up);
    EXPECT_EQ(focused(), &field());
}

TEST_F(SelectionKeyboard, DownStaysInTheFieldWhileTheListIsEmpty)
{
    show({});
    press(Qt::Key_Down);
    EXPECT_EQ(focused(), &field());
}

TEST_F(SelectionKeyboard, ReturnOnARowChoosesItAndTheNextOneAfterIt)
{
    show({"Alpha", "Beta", "Gamma"});
    controller.onApplicationSelected = [this](const applications::ApplicationEntityPtr& chosen) {
        selected.push_back(chosen->name);
        auto left = controller.originalApplicationEntities;
        std::erase(left, chosen);
        controller.displayApplicationsList(left);
    };

    press(Qt::Key_Down);
    press(Qt::Key_Return, "\r");
    press(Qt::Key_Return, "\r");

    EXPECT_EQ(selected, (Names{"Alpha", "Beta"}));
    EXPECT_EQ(focused(), &table());
}

TEST_F(SelectionKeyboard, TypingInTheListGoesOnInTheField)
{
    show({"Alpha", "Beta"});
    filter("b");
    press(Qt::Key_Down);

    press(Qt::Key_E, "e");

    EXPECT_EQ(focused(), &field());
    EXPECT_EQ(field().stringValue(), "be");
    EXPECT_EQ(rows(), Names{"Beta"});
}

TEST_F(SelectionKeyboard, BackspaceInTheListTakesFromTheField)
{
    show({"Alpha", "Beta"});
    filter("be");
    press(Qt::Key_Down);

    press(Qt::Key_Backspace, "\b");

    EXPECT_EQ(field().stringValue(), "b");
}

TEST_F(SelectionKeyboard, ReturnInTheFieldChoosesNothing)
{
    show({"Alpha"});
    press(Qt::Key_Return, "\r");
    EXPECT_EQ(selected, Names{});
    EXPECT_EQ(focused(), &field());
}

TEST_F(SelectionKeyboard, TabLeadsFromTheFieldToTheListAndOn)
{
    show({"Alpha"});
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), &table());
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), controller.showRunningApplicationsOnlyCheckboxOutlet.get());
}

TEST_F(SelectionKeyboard, EscapeClosesTheWindowFromTheFieldAndFromTheList)
{
    show({"Alpha"});
    press(Qt::Key_Escape);
    EXPECT_FALSE(controller.isWindowVisible());

    controller.focus();
    table().setFocus();
    press(Qt::Key_Escape);
    EXPECT_FALSE(controller.isWindowVisible());
}

TEST_F(SelectionKeyboard, SelectAllSelectsTheTextOfTheField)
{
    show({"Alpha"});
    filter("alp");

    press(Qt::Key_A, QString(), Qt::ControlModifier);

    EXPECT_EQ(field().selectedText(), "alp");
}

TEST_F(SelectionKeyboard, TheButtonsOfTheRowsAreNoStopsOfTheirOwn)
{
    show({"Alpha"});
    const auto& button = cell(0).control<ui::ImageButtonView>(ui::MyCell::BUTTON_TAG);
    EXPECT_EQ(button.focusPolicy(), Qt::NoFocus);
}
