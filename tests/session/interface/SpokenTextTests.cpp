// What a screen reader is told while texts are typed.

#include "session/interface/InterfaceTest.h"

#include <algorithm>

namespace agent {

namespace {

using accessibility::TextWatch;

constexpr auto INSERT = "insert";
constexpr auto DELETE = "delete";

} // namespace

class SpokenText : public InterfaceTest
{
protected:
    void SetUp() override
    {
        InterfaceTest::SetUp();
        texts.emplace(user->listenToTexts());
    }

    /// Characters that came or went with all events of that kind.
    std::size_t told(const std::string& kind)
    {
        std::size_t characters = 0;
        for (const TextWatch::Change& change : texts->changes()) {
            if (change.kind == kind) {
                characters += charactersIn(change.text);
            }
        }
        return characters;
    }

    void waitUntilTold(const std::string& kind, std::size_t characters)
    {
        user->waitUntil(std::to_string(characters) + " characters are told, " + kind, [&] {
            return told(kind) >= characters;
        });
    }

    /// Nothing but marks for characters was ever told.
    void expectMarksAlone()
    {
        for (const TextWatch::Change& change : texts->changes()) {
            EXPECT_TRUE(std::all_of(
                change.text.begin(), change.text.end(), [](char byte) { return isNoAscii(byte); }
            )) << change.kind
               << " \"" << change.text << "\"";
        }
    }

    std::optional<TextWatch> texts;

private:
    static bool isNoAscii(char byte) { return (static_cast<unsigned char>(byte) & 0x80U) != 0; }

    static std::size_t charactersIn(const std::string& text)
    {
        constexpr unsigned MARK = 0xC0;
        constexpr unsigned CONTINUED = 0x80;
        return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char byte) {
            return (static_cast<unsigned char>(byte) & MARK) != CONTINUED;
        }));
    }
};

TEST_F(SpokenText, AtTheGateIsMarksAlone)
{
    const std::string wrong = "xylophone";
    startWithPassword();
    enterAtGate(wrong);
    waitUntilTold(INSERT, wrong.size());
    enterAtGate(PASSWORD);
    user->waitFor(screens::CONTENT);

    waitUntilTold(INSERT, wrong.size() + std::string(PASSWORD).size());
    waitUntilTold(DELETE, wrong.size() + std::string(PASSWORD).size()); // typed over, cleared
    expectMarksAlone();
}

TEST_F(SpokenText, AtTheLockIsMarksAlone)
{
    addApplication("garden", "Garden");
    startWithPassword({"garden"});
    const desktop::ChildProcess garden = startApplication("garden");
    ASSERT_TRUE(session->waitForCover());

    session->enter(PASSWORD);

    ASSERT_TRUE(session->waitForEndOfCover());
    waitUntilTold(INSERT, std::string(PASSWORD).size());
    expectMarksAlone();
}

TEST_F(SpokenText, InThePasswordWindowIsMarksAlone)
{
    startWithPassword();
    unlock();
    waitUntilTold(DELETE, std::string(PASSWORD).size());
    const std::size_t before = told(INSERT);
    choose(screens::CHANGE_PASSWORD);
    enterNewPassword("another", "another");
    enterAtGate("another");
    user->waitFor(screens::CONTENT);
    choose(screens::CHANGE_PASSWORD); // clears what its fields still hold

    waitUntilTold(INSERT, before + 2 * std::string("another").size());
    expectMarksAlone();
}

TEST_F(SpokenText, InAPlainFieldIsWhatIsTyped)
{
    addApplication("garden", "Garden");
    startWithPassword();
    unlock();
    choose(screens::LOCK_OTHERS);
    user->focus(screens::FILTER);
    const std::size_t before = texts->changes().size();

    user->type("ga");

    user->waitUntil("both letters are told, once each", [&] {
        std::string typed;
        for (std::size_t at = before; at < texts->changes().size(); ++at) {
            typed += texts->changes()[at].text;
        }
        return typed == "ga";
    });
}

} // namespace agent
