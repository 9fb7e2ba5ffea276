#include "HelpWindowTest.h"
#include "ui/views/Theme.h"

#include <QTextBlock>

#include <set>
#include <string>

namespace {

class HelpPageTest : public HelpWindowTest
{
protected:
    HelpPageTest() { present(); }

    [[nodiscard]] int place() const { return page().verticalScrollBar()->value(); }

    [[nodiscard]] std::string textAtTheTop() const
    {
        return page().cursorForPosition(QPoint(40, 20)).block().text().toStdString();
    }

    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(window().windowHandle(), static_cast<Qt::Key>(key), modifiers);
    }

    [[nodiscard]] double typeSize() const { return page().document()->defaultFont().pointSizeF(); }

    /// Where the links of the page lead.
    [[nodiscard]] std::set<QString> links() const
    {
        std::set<QString> found;
        for (QTextBlock block = page().document()->begin(); block.isValid(); block = block.next()) {
            for (auto part = block.begin(); !part.atEnd(); ++part) {
                const QTextCharFormat format = part.fragment().charFormat();
                if (format.isAnchor() && !format.anchorHref().isEmpty()) {
                    found.insert(format.anchorHref());
                }
            }
        }
        return found;
    }

    void follow(const QString& href) const
    {
        emit page().anchorClicked(page().source().resolved(QUrl(href)));
    }
};

} // namespace

TEST_F(HelpPageTest, BeginsAtItsTop)
{
    EXPECT_EQ(place(), 0);
    EXPECT_EQ(textAtTheTop(), "Tarvel Help");
}

TEST_F(HelpPageTest, EveryLinkWithinThePageLeadsToItsHeading)
{
    std::set<std::string> headings;
    int followed = 0;
    for (const QString& href : links()) {
        if (!href.startsWith('#')) {
            continue;
        }
        ++followed;
        press(Qt::Key_Home);
        follow(href);
        EXPECT_GT(place(), 0) << href.toStdString();
        headings.insert(textAtTheTop());
    }
    EXPECT_GE(followed, 6);
    EXPECT_TRUE(headings.contains("Setting up"));
    EXPECT_TRUE(headings.contains("Choosing applications"));
    EXPECT_TRUE(fake.calls.empty());
}

TEST_F(HelpPageTest, OtherLinksOpenInTheDesktop)
{
    follow("https://quorvent.example/tarvel?a=1#b");
    follow("mailto:support@quorvent.example?Subject=Tarvel%20Support");

    EXPECT_EQ(
        fake.calls,
        (fakes::Calls{
            "workspace openUrl https://quorvent.example/tarvel?a=1#b",
            "workspace openUrl mailto:support@quorvent.example?Subject=Tarvel%20Support"})
    );
    EXPECT_EQ(page().source(), QUrl::fromLocalFile(HELP_PAGE));
}

TEST_F(HelpPageTest, EveryLinkIsReachedByTabAndFollowedByReturn)
{
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    press(Qt::Key_Return);
    EXPECT_EQ(textAtTheTop(), "When an application is locked");
}

TEST_F(HelpPageTest, TheKeyboardScrollsIt)
{
    press(Qt::Key_Down);
    const int line = place();
    EXPECT_GT(line, 0);
    press(Qt::Key_PageDown);
    EXPECT_GT(place(), line + page().viewport()->height() / 2);
    press(Qt::Key_End);
    EXPECT_EQ(place(), page().verticalScrollBar()->maximum());
    press(Qt::Key_Home);
    EXPECT_EQ(place(), 0);
    press(Qt::Key_Space);
    EXPECT_GT(place(), page().viewport()->height() / 2);
}

TEST_F(HelpPageTest, ControlWithPlusMinusAndZeroChangesTheSizeOfTheType)
{
    const double usual = typeSize();
    press(Qt::Key_Plus, Qt::ControlModifier);
    press(Qt::Key_Equal, Qt::ControlModifier);
    EXPECT_NEAR(typeSize(), usual * 1.21, 0.01);
    press(Qt::Key_Minus, Qt::ControlModifier);
    press(Qt::Key_Minus, Qt::ControlModifier);
    press(Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_NEAR(typeSize(), usual / 1.1, 0.01);
    press(Qt::Key_0, Qt::ControlModifier);
    EXPECT_NEAR(typeSize(), usual, 0.01);
}

TEST_F(HelpPageTest, TheTypeStaysLegibleAndOnThePage)
{
    const double usual = typeSize();
    for (int step = 0; step < 100; ++step) {
        press(Qt::Key_Minus, Qt::ControlModifier);
    }
    EXPECT_NEAR(typeSize(), usual * 0.5, 0.01);
    for (int step = 0; step < 100; ++step) {
        press(Qt::Key_Plus, Qt::ControlModifier);
    }
    EXPECT_NEAR(typeSize(), usual * 4.0, 0.01);
}

TEST_F(HelpPageTest, WhatIsReadStaysInSightWhenTheTypeChanges)
{
    follow("#choose");
    const std::string before = textAtTheTop();
    for (int step = 0; step < 5; ++step) {
        press(Qt::Key_Plus, Qt::ControlModifier);
    }
    EXPECT_EQ(textAtTheTop(), before);
}

TEST_F(HelpPageTest, NamesTheCommandsAsTheInterfaceDoes)
{
    const QString text = page().toPlainText();
    for (const char* command :
         {"Set Up Password",
          "Confirm",
          "Protection is active",
          "Start at login",
          "Password Preferences",
          "Lock Other Applications",
          "Help & Support",
          "Quit",
          "List Running Applications Only",
          "Lock administrative applications",
          "Contact Support"}) {
        EXPECT_TRUE(text.contains(command)) << command;
    }
}

TEST_F(HelpPageTest, IsReadInTheProgramsColours)
{
    for (QTextBlock block = page().document()->begin(); block.isValid(); block = block.next()) {
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            const QTextCharFormat format = part.fragment().charFormat();
            if (part.fragment().text().trimmed().isEmpty()) {
                continue;
            }
            EXPECT_EQ(
                format.foreground().color(),
                format.isAnchor() && !format.anchorHref().isEmpty() ? ui::Theme::FOCUS
                                                                    : ui::Theme::TEXT
            ) << part.fragment().text().toStdString();
        }
    }
}
