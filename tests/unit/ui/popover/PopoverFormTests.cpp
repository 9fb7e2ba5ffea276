// What is special about the popover's forms.
#include "PopoverTest.h"

namespace {

using PopoverForm = PopoverTest;

} // namespace

TEST_F(PopoverForm, TheEmptyFieldSaysWhatBelongsThereWhileItHasTheKeys)
{
    startWith(PASSWORD);
    open();
    ASSERT_TRUE(field().hasFocus());
    const QImage picture = field().grab().toImage();
    const int left = picture.height(); // right of the caret
    const auto texts = [left](const QImage& drawn) {
        return drawn.copy(left, 0, drawn.width() - left, drawn.height());
    };
    field().setPlaceholderText({});
    EXPECT_NE(texts(field().grab().toImage()), texts(picture));
}

TEST_F(PopoverForm, ItsColumnsStandAsFarFromTheOneEdgeAsFromTheOther)
{
    constexpr int DISTANCE = 16;
    startWith(PASSWORD, BOTH);
    open();
    unlock();
    const QWidget& view = controller().view();
    const auto placeIn = [&view](const QWidget& widget) {
        return QRect(widget.mapTo(&view, QPoint(0, 0)), widget.size());
    };
    const std::vector<const QWidget*> column{
        controller().menuButtonOutlet.get(),
        &removeButton(0),
        &removeButton(1),
        controller().activateApplicationLightOutlet.get(),
        controller().startAtLoginLightOutlet.get()};
    for (const QWidget* each : column) {
        const int picture = placeIn(*each).right() + 1 - ui::ImageButtonView::PADDING;
        EXPECT_EQ(view.width() - picture, DISTANCE) << each->objectName().toStdString();
    }
    const QWidget& icon = *ui::viewWithTag(*table().cellAt(0), ui::MyCell::ICON_TAG);
    EXPECT_EQ(placeIn(icon).left(), DISTANCE);
    EXPECT_EQ(placeIn(*view.findChild<QLabel*>("headerLabel")).left(), DISTANCE);
}

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
