// The page rule in every order of what can happen, checked against a model of it.
#include "PopoverTest.h"

#include <array>
#include <cstddef>

namespace {

constexpr std::size_t LENGTH = 4; // of the orders, each of which comes once

/// The shortest row of numbers below `letters` in which each word of that length stands somewhere:
/// the words without an inner period, in the order of the alphabet.
class EveryWord
{
public:
    EveryWord(std::size_t letters, std::size_t length)
        : letters(letters),
          length(length),
          word(length + 1)
    {
        extend(1, 1);
        row.insert(row.end(), row.begin(), row.begin() + static_cast<std::ptrdiff_t>(length) - 1);
    }

    std::vector<std::size_t> row;

private:
    void extend(std::size_t place, std::size_t period)
    {
        if (place > length) {
            if (length % period == 0) {
                const auto begin = word.begin() + 1;
                row.insert(row.end(), begin, begin + static_cast<std::ptrdiff_t>(period));
            }
            return;
        }
        word[place] = word[place - period];
        extend(place + 1, period);
        for (std::size_t next = word[place - period] + 1; next < letters; ++next) {
            word[place] = next;
            extend(place + 1, place);
        }
    }

    std::size_t letters;
    std::size_t length;
    std::vector<std::size_t> word;
};

class PageRuleInEveryOrder : public PopoverTest
{
protected:
    struct Happening
    {
        const char* name;
        std::function<void()> happens;
    };

    void opens() { expected = password.empty() ? Page::NoPassword : Page::Password; }

    void openOnceMore() // a further start of the program
    {
        open();
        if (expected == Page::None) {
            opens();
        }
    }

    void useItem()
    {
        clickItem();
        if (expected == Page::None) {
            opens();
        } else {
            expected = Page::None;
        }
    }

    void goElsewhere()
    {
        clickElsewhere();
        expected = Page::None;
    }

    void enterRight()
    {
        if (page() == Page::Password) {
            enter(QString::fromStdString(password));
            expected = password.empty() ? Page::Password : Page::Content;
        }
    }

    void enterWrong()
    {
        if (page() == Page::Password) {
            enter("wrong");
        }
    }

    void changeSettings()
    {
        storage::ConfigurationAndPreferencesService& settings =
            presenter->configurationAndPreferencesService;
        settings.setApplicationIsActive(!settings.getApplicationIsActive());
        settle();
    }

    /// There is one, another one, and none, in turn.
    void changePassword()
    {
        password = password.empty() ? PASSWORD : password == PASSWORD ? "other" : "";
        presenter->configurationAndPreferencesService.setApplicationPassword(password);
        settle();
        if (expected == Page::NoPassword && !password.empty()) {
            expected = Page::Password;
        }
    }

    /// Nothing but the page is within reach, and nothing that was typed is kept.
    void expectNothingElse()
    {
        EXPECT_EQ(popup().active, expected != Page::None);
        EXPECT_EQ(
            controller().activateApplicationCheckboxOutlet &&
                controller().activateApplicationCheckboxOutlet->isEnabled(),
            expected == Page::Content
        );
        if (controller().requestPasswordViewController != nullptr && expected != Page::Password) {
            EXPECT_EQ(field().text(), "");
        }
    }

    const std::array<Happening, 7> happenings{{
        {"further start", [this] { openOnceMore(); }},
        {"item", [this] { useItem(); }},
        {"click elsewhere", [this] { goElsewhere(); }},
        {"right password", [this] { enterRight(); }},
        {"wrong password", [this] { enterWrong(); }},
        {"settings", [this] { changeSettings(); }},
        {"change of password", [this] { changePassword(); }},
    }};
    std::string password = PASSWORD;
    Page expected = Page::None;
};

} // namespace

TEST_F(PageRuleInEveryOrder, TheContentIsSeenAfterTheRightPasswordOfTheOpeningOnly)
{
    startWith(PASSWORD, BOTH);
    const std::vector<std::size_t> order = EveryWord(happenings.size(), LENGTH).row;
    ASSERT_EQ(order.size(), 7U * 7U * 7U * 7U + LENGTH - 1U);
    std::string story;
    std::size_t contents = 0;
    for (const std::size_t next : order) {
        story += std::string(", ") + happenings[next].name;
        happenings[next].happens();
        ASSERT_EQ(page(), expected) << "after " << story;
        expectNothingElse();
        ASSERT_FALSE(HasFailure()) << "after " << story;
        contents += page() == Page::Content ? 1U : 0U;
    }
    EXPECT_GT(contents, 0U);
}
