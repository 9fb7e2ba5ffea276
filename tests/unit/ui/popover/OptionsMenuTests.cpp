#include "PopoverTest.h"
#include "ui/popover/OptionsMenu.h"
#include "ui/views/Images.h"
#include "ui/views/Theme.h"

#include <algorithm>
#include <array>

namespace {

class OptionsMenu : public PopoverTest
{
protected:
    OptionsMenu()
    {
        startWith(PASSWORD, BOTH);
        open();
        unlock();
    }

    ui::OptionsMenu& openMenu()
    {
        QTest::mouseClick(controller().menuButtonOutlet.get(), Qt::LeftButton);
        EXPECT_TRUE(controller().optionsMenu->isVisible());
        return *controller().optionsMenu;
    }

    /// The name of the picture that the entry shows.
    static std::string pictureOf(const QAction& entry)
    {
        const QImage shown = pixels(entry.icon());
        for (const char* name : PICTURES) {
            for (const QString& each : {QString(name), QString(name) + "_White"}) {
                if (pixels(ui::requiredImage(each)) == shown) {
                    return each.toStdString();
                }
            }
        }
        return "unknown";
    }

    static std::vector<std::string> picturesOf(const ui::OptionsMenu& menu)
    {
        std::vector<std::string> names;
        for (const int index : {0, 1, 3, 5}) {
            names.push_back(pictureOf(*menu.actions().at(index)));
        }
        return names;
    }

    struct Extent
    {
        int first = 0;
        int last = 0;
    };

    /// From the leftmost to the rightmost pixel of that colour.
    static Extent extentOf(const QColor& color, const QImage& picture)
    {
        Extent found{picture.width(), -1};
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (picture.pixelColor(x, y) == color) {
                    found = {std::min(found.first, x), std::max(found.last, x)};
                }
            }
        }
        return found;
    }

    static QImage pixels(const QIcon& icon) { return icon.pixmap(48, 48).toImage(); }

    static constexpr std::array PICTURES{
        "PasswordMenuOption",
        "LockAnotherAppMenuOption",
        "HelpMenuOption",
        "QuitApplicationMenuOption"};
};

using Names = std::vector<std::string>;

const Names NORMAL{
    "PasswordMenuOption",
    "LockAnotherAppMenuOption",
    "HelpMenuOption",
    "QuitApplicationMenuOption"};

} // namespace

TEST_F(OptionsMenu, HasItsEntriesInTheirOrder)
{
    const ui::OptionsMenu& menu = openMenu();
    Names titles;
    Names keys;
    for (const QAction* entry : menu.actions()) {
        QString title = entry->text();
        titles.push_back(entry->isSeparator() ? "-" : title.replace("&&", "&").toStdString());
        keys.push_back(entry->shortcut().toString().toStdString());
        EXPECT_TRUE(entry->isEnabled());
        EXPECT_FALSE(entry->isChecked());
    }
    EXPECT_EQ(
        titles,
        (Names{
            "Password Preferences", "Lock Other Applications", "-", "Help & Support", "-", "Quit"})
    );
    EXPECT_EQ(keys, (Names{",", "+", "", "H", "", ""}));
    EXPECT_EQ(picturesOf(menu), NORMAL);
}

TEST_F(OptionsMenu, ItsPicturesAreTwelvePixelsWideAndHigh)
{
    const ui::OptionsMenu& menu = openMenu();
    EXPECT_EQ(menu.style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, &menu), 12);
}

TEST_F(OptionsMenu, ItsSeparatorsAreAsWideAsItsHighlight)
{
    ui::OptionsMenu& menu = openMenu();
    menu.setActiveAction(menu.actions().at(0));
    const QImage picture = menu.grab().toImage();
    const Extent highlight = extentOf(ui::Theme::ACCENT, picture);
    const Extent separator = extentOf(ui::Theme::LINE, picture);
    EXPECT_LT(highlight.first, highlight.last);
    EXPECT_EQ(separator.first, highlight.first);
    EXPECT_EQ(separator.last, highlight.last);
}

TEST_F(OptionsMenu, AppearsBelowTheMiddleOfItsButton)
{
    popup().hidePopover();
    putItemAt({300, 0, 22, 22}); // with room for the menu on all sides
    open();
    unlock();
    const ui::OptionsMenu& menu = openMenu();
    const QWidget& opener = *controller().menuButtonOutlet;
    const QPoint wanted = opener.mapToGlobal(QPoint(opener.width() / 2, opener.height() * 5 / 4));
    EXPECT_EQ(menu.pos(), wanted);
}

TEST_F(OptionsMenu, IsMadeAnewAtEveryClick)
{
    const QPointer<ui::OptionsMenu> first = &openMenu();
    first->close();
    openMenu();
    EXPECT_TRUE(first.isNull());
}

TEST_F(OptionsMenu, TheHighlightedEntryShowsItsWhitePictureAndTheOthersTheirNormalOne)
{
    ui::OptionsMenu& menu = openMenu();
    menu.setActiveAction(menu.actions().at(0));
    Names expected = NORMAL;
    expected[0] += "_White";
    EXPECT_EQ(picturesOf(menu), expected);

    menu.setActiveAction(menu.actions().at(5));
    expected = NORMAL;
    expected[3] += "_White";
    EXPECT_EQ(picturesOf(menu), expected);

    menu.willHighlightItem(nullptr);
    EXPECT_EQ(picturesOf(menu), NORMAL);
    menu.willHighlightItem(menu.actions().at(2)); // a separator has no picture
    EXPECT_EQ(picturesOf(menu), NORMAL);
}

TEST_F(OptionsMenu, HighlightingTheSameEntryAgainKeepsItWhite)
{
    ui::OptionsMenu& menu = openMenu();
    menu.willHighlightItem(menu.actions().at(1));
    menu.willHighlightItem(menu.actions().at(1));
    EXPECT_EQ(pictureOf(*menu.actions().at(1)), "LockAnotherAppMenuOption_White");
}

TEST_F(OptionsMenu, ItsEntriesLeadToTheirRoutes)
{
    for (const int index : {0, 1, 3}) {
        openMenu().actions().at(index)->trigger();
    }
    EXPECT_EQ(requests, (Names{"preferences", "add", "help"}));
}

TEST_F(OptionsMenu, QuitEndsTheHelperAndThenTheProgram)
{
    ui::OptionsMenu& menu = openMenu();
    menu.close();
    takeCalls();
    EXPECT_THROW(controller().quitApplicationMenuButtonClick(), fakes::ProcessEnded);
    const fakes::Calls calls = takeCalls();
    ASSERT_EQ(calls.size(), 2U);
    EXPECT_NE(calls.front().find("TERMINATE_HELPER_TARVEL"), std::string::npos);
    EXPECT_EQ(calls.back(), "processInfo exit 0");
}

TEST_F(OptionsMenu, ItsKeysWorkWhileItIsOpen)
{
    QTest::keyClicks(&openMenu(), ",");
    EXPECT_FALSE(controller().optionsMenu->isVisible());
    QTest::keyClicks(&openMenu(), "+");
    QTest::keyClicks(&openMenu(), "h");
    EXPECT_EQ(requests, (Names{"preferences", "add", "help"}));
}

TEST_F(OptionsMenu, EscapeClosesTheMenuAndLeavesThePopover)
{
    ui::OptionsMenu& menu = openMenu();
    QTest::keyClick(&menu, Qt::Key_Escape);
    EXPECT_FALSE(menu.isVisible());
    EXPECT_EQ(page(), Page::Content);
}

TEST_F(OptionsMenu, DoesNotOutliveThePopover)
{
    const ui::OptionsMenu& menu = openMenu();
    popup().hidePopover();
    EXPECT_FALSE(menu.isVisible());
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(OptionsMenu, WithoutListenersItsEntriesDoNothing)
{
    ui::PopoverViewController alone;
    alone.changePreferencesMenuButtonClick();
    alone.lockAnotherAppMenuButtonClick();
    alone.helpMenuButtonClick();
    alone.quitApplicationMenuButtonClick();
    EXPECT_EQ(requests, Names());
}
