// What is special about the popover's forms.
#include "PopoverTest.h"

namespace {

using PopoverForm = PopoverTest;

} // namespace

TEST_F(PopoverForm, WhatShakesHoldsTheFieldAndItsButton)
{
    startWith(PASSWORD);
    open();
    EXPECT_TRUE(gate().centralViewOutlet->isAncestorOf(&field()));
    EXPECT_TRUE(gate().centralViewOutlet->isAncestorOf(&button("passwordEnterButton")));
}

TEST_F(PopoverForm, IsMirroredWhereTextRunsFromRightToLeft)
{
    startWith(PASSWORD, BOTH);
    open();
    unlock();
    const auto left = [this](const QWidget* widget) {
        return widget->mapTo(&window(), QPoint(0, 0)).x();
    };
    const QWidget* const add = controller().addApplicationButtonOutlet.get();
    const QWidget* const light = controller().activateApplicationLightOutlet.get();
    EXPECT_GT(left(add), window().width() / 2);
    EXPECT_GT(left(light), window().width() / 2);
    QApplication::setLayoutDirection(Qt::RightToLeft);
    settle();
    EXPECT_LT(left(add), window().width() / 2);
    EXPECT_LT(left(light), window().width() / 2);
    EXPECT_LT(left(&removeButton(0)), window().width() / 2);
}
