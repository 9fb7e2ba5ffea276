#include "qt/Input.h"
#include "ui/views/ImageButtonView.h"

#include <vector>

#include <gtest/gtest.h>

namespace {

class ImageButtonViewTest : public testing::Test
{
protected:
    ImageButtonViewTest()
    {
        button.initiate(7, false);
        button.onClick = [this](int id) { clicks.push_back(id); };
    }

    ui::ImageButtonView button;
    std::vector<int> clicks;
};

} // namespace

TEST_F(ImageButtonViewTest, APressGivesItsId)
{
    support::click(button);
    EXPECT_EQ(clicks, std::vector<int>{7});
}

TEST_F(ImageButtonViewTest, ADoubleClickIsOnePress)
{
    support::doubleClick(button);
    EXPECT_EQ(clicks, std::vector<int>{7});
}

TEST_F(ImageButtonViewTest, ReturnAndSpacePressIt)
{
    support::press(button, Qt::Key_Return, "\r");
    support::press(button, Qt::Key_Space, " ");
    EXPECT_EQ(clicks, (std::vector<int>{7, 7}));
}

TEST_F(ImageButtonViewTest, APressWithoutAListenerIsDropped)
{
    button.onClick = nullptr;
    support::click(button);
    EXPECT_TRUE(clicks.empty());
}
