#include "PopoverTest.h"
#include "ui/popover/NoPasswordViewController.h"

namespace {

class NoPasswordPage : public PopoverTest
{
protected:
    NoPasswordPage()
    {
        start();
        open();
        EXPECT_EQ(page(), Page::NoPassword);
    }
};

using Requests = std::vector<std::string>;

} // namespace

TEST_F(NoPasswordPage, ItsButtonLeadsToThePreferences)
{
    button("setupPasswordButton").click();
    EXPECT_EQ(requests, Requests{"preferences"});
}

TEST_F(NoPasswordPage, HelpLeadsToTheHelp)
{
    button("helpButton").click();
    EXPECT_EQ(requests, Requests{"help"});
}

TEST_F(NoPasswordPage, WithoutListenersItsButtonsDoNothing)
{
    ui::NoPasswordViewController page;
    page.setupPasswordButtonClick();
    page.helpButtonClick();
    EXPECT_EQ(requests, Requests());
}

TEST_F(NoPasswordPage, ItsButtonHasTheKeyboardAndReturnPressesIt)
{
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
    ASSERT_EQ(QApplication::focusWidget(), &button("setupPasswordButton"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(requests, Requests{"preferences"});
}

TEST_F(NoPasswordPage, IsMadeOnceAndKept)
{
    const auto* const before = controller().noPasswordViewController.get();
    popup().hidePopover();
    open();
    EXPECT_EQ(controller().noPasswordViewController.get(), before);
    EXPECT_EQ(page(), Page::NoPassword);
    EXPECT_EQ(controller().requestPasswordViewController, nullptr);
}
