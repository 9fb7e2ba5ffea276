// What a user sees of the popover's pages, and how the keyboard goes through them.
#include "PopoverTest.h"
#include "qt/FormChecks.h"

namespace {

using Names = std::vector<std::string>;

class PopoverForm : public PopoverTest
{
protected:
    /// The pages, and how to get to each.
    struct Way
    {
        const char* name;
        std::function<void()> show;
    };

    void forEveryPage(const std::function<void(const char* name)>& check)
    {
        const std::vector<Way> ways{
            {"no password", [this] { startWith(""); }},
            {"password", [this] { startWith(PASSWORD); }},
            {"content", [this] { startWith(PASSWORD, BOTH); }},
            {"empty content", [this] { startWith(PASSWORD); }},
        };
        for (const Way& way : ways) {
            presenter = std::make_unique<ui::PopoverInterfacePresenter>();
            way.show();
            open();
            if (std::string(way.name).ends_with("content")) {
                unlock();
            }
            settle();
            check(way.name);
        }
    }
};

} // namespace

TEST_F(PopoverForm, EveryWidgetIsNamedAndAccessible)
{
    for (const char* form : {"PopoverView", "RequestPasswordView", "NoPasswordView"}) {
        const std::string path = std::string(SOURCES "/ui/popover/") + form + ".ui";
        EXPECT_EQ(support::troublesOfForm(path), Names()) << form;
    }
}

TEST_F(PopoverForm, EveryOutletIsThere)
{
    forEveryPage([this](const char* name) {
        for (const char* outlet :
             {"noItemViewOutlet",
              "applicationsTableViewOutlet",
              "tableViewScrollViewOutlet",
              "tableHeaderViewOutlet",
              "addApplicationButtonOutlet",
              "menuButtonOutlet",
              "activateApplicationCheckboxOutlet",
              "startAtLoginCheckboxOutlet",
              "activateApplicationLightOutlet",
              "startAtLoginLightOutlet"}) {
            EXPECT_NE(window().findChild<QWidget*>(outlet), nullptr) << name << ' ' << outlet;
        }
    });
    startWith(PASSWORD);
    open();
    EXPECT_EQ(field().objectName(), "passwordTextFieldOutlet");
    EXPECT_EQ(gate().centralViewOutlet->objectName(), "centralViewOutlet");
    EXPECT_TRUE(gate().centralViewOutlet->isAncestorOf(&field()));
    EXPECT_TRUE(gate().centralViewOutlet->isAncestorOf(&button("passwordEnterButton")));
}

TEST_F(PopoverForm, EveryControlThatTakesTheFocusIsLabelledAndReachedByTab)
{
    forEveryPage([this](const char* name) {
        EXPECT_EQ(support::troublesOfWindow(window()), Names()) << name;
    });
}

TEST_F(PopoverForm, NothingIsCut)
{
    forEveryPage([this](const char* name) {
        EXPECT_EQ(support::cutTextsOf(window()), Names()) << name;
    });
}

TEST_F(PopoverForm, NothingIsCutWithLongerTexts)
{
    forEveryPage([this](const char* name) {
        support::lengthenTexts(window());
        settle();
        EXPECT_EQ(support::cutTextsOf(window()), Names()) << name;
    });
}

TEST_F(PopoverForm, NothingIsCutWithTypeOfTwiceTheSize)
{
    const support::LargerType twice(2.0);
    forEveryPage([this](const char* name) {
        EXPECT_EQ(support::cutTextsOf(window()), Names()) << name;
    });
    presenter.reset();
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
