// What holds for every form of the interface.
#include "LoadedForms.h"
#include "fakes/FakePlatform.h"
#include "qt/FormChecks.h"
#include "qt/ThemedApplication.h"

#include <QDirIterator>
#include <QTest>

#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

const testing::Environment* const ENVIRONMENT =
    testing::AddGlobalTestEnvironment(new support::ThemedEnvironment);

using Troubles = std::vector<std::string>;

constexpr auto FOLDER = SOURCES "/ui/";
constexpr QSize SMALL_SCREEN(1280, 800);

class Forms : public testing::TestWithParam<FormCase>
{
protected:
    Forms() { fake.bundles.resources["Help.html"] = HELP_PAGE; }

    void TearDown() override { QApplication::setLayoutDirection(Qt::LeftToRight); }

    QWidget& load()
    {
        loaded = GetParam().load();
        return loaded->form();
    }

    QWidget& show()
    {
        QWidget& window = loaded->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
        return window;
    }

    /// Expects that a user can read and use all of the form.
    void expectEverythingInSight()
    {
        QWidget& window = show();
        EXPECT_EQ(support::cutTextsOf(window), Troubles());
        EXPECT_EQ(support::misplacedIn(window), Troubles());
    }

    fakes::FakePlatform fake;
    std::unique_ptr<LoadedForm> loaded;
};

} // namespace

TEST(AllForms, AreTestedHere)
{
    std::set<std::string> tested;
    for (const FormCase& form : allForms()) {
        tested.insert(form.file);
    }
    std::set<std::string> found;
    const QDir folder(FOLDER);
    QDirIterator files(FOLDER, {"*.ui"}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        found.insert(folder.relativeFilePath(files.next()).toStdString());
    }
    EXPECT_EQ(tested, found);
}

TEST_P(Forms, EveryWidgetIsNamedAndAccessible)
{
    EXPECT_EQ(support::troublesOfForm(FOLDER + GetParam().file), Troubles());
}

TEST_P(Forms, EveryOutletIsThere)
{
    QWidget& form = load();
    for (const std::string& outlet : GetParam().outlets) {
        EXPECT_NE(form.findChild<QWidget*>(QString::fromStdString(outlet)), nullptr) << outlet;
    }
}

TEST_P(Forms, EveryControlThatTakesTheFocusIsLabelledAndReachedByTab)
{
    load();
    EXPECT_EQ(support::troublesOfWindow(show()), Troubles());
}

TEST_P(Forms, TabFollowsTheEye)
{
    load();
    EXPECT_EQ(support::tabJumpsOf(show()), Troubles());
}

TEST_P(Forms, EverythingIsInSight)
{
    load();
    expectEverythingInSight();
}

TEST_P(Forms, EverythingIsInSightWithLongerTexts)
{
    support::lengthenTexts(load());
    expectEverythingInSight();
}

TEST_P(Forms, EverythingIsInSightWithTypeOfTwiceTheSize)
{
    const support::LargerType twice(2.0);
    load();
    expectEverythingInSight();
}

TEST_P(Forms, EverythingIsInSightWithLongerTextsInTypeOfTwiceTheSize)
{
    const support::LargerType twice(2.0);
    support::lengthenTexts(load());
    expectEverythingInSight();
}

TEST_P(Forms, EverythingIsInSightWhereTextRunsFromRightToLeft)
{
    QApplication::setLayoutDirection(Qt::RightToLeft);
    support::lengthenTexts(load());
    expectEverythingInSight();
}

TEST_P(Forms, FitOnASmallScreenWithTypeOfTwiceTheSize)
{
    const support::LargerType twice(2.0);
    load();
    const QSize size = show().size();
    EXPECT_LE(size.width(), SMALL_SCREEN.width());
    EXPECT_LE(size.height(), SMALL_SCREEN.height());
}

INSTANTIATE_TEST_SUITE_P(All, Forms, testing::ValuesIn(allForms()), [](const auto& test) {
    return test.param.title;
});
