#include "ControlledStore.h"
#include "Secrets.h"
#include "linux/secretservice/WriteThroughKeychain.h"

#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace secretservice {
namespace {

using platform::Bytes;
using platform::KeychainStatus;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Mode = StoreControl::Mode;

Bytes bytes(std::string_view text)
{
    return {text.begin(), text.end()};
}

class WriteThroughKeychainTest : public testing::Test
{
protected:
    /// With a budget that no machine exceeds by being busy, unless the test is about the budget.
    void open(const Items& known = {}, std::chrono::milliseconds budget = std::chrono::seconds(60))
    {
        control->change([&known](Items& items) { items = known; });
        keychain = std::make_unique<WriteThroughKeychain>(
            std::make_unique<ControlledStore>(control),
            known,
            [this](std::string_view line) {
                const std::lock_guard lock(mutex);
                lines.emplace_back(line);
            },
            budget
        );
    }

    std::optional<std::string> value(const std::string& account)
    {
        const platform::KeychainLookup lookup = keychain->copyMatching(account);
        if (lookup.status != KeychainStatus::NoError || !lookup.data.has_value()) {
            return std::nullopt;
        }
        return std::string(lookup.data->begin(), lookup.data->end());
    }

    std::vector<std::string> reported()
    {
        const std::lock_guard lock(mutex);
        return lines;
    }

    static constexpr auto BUDGET = WriteThroughKeychain::BUDGET;
    std::shared_ptr<StoreControl> control = std::make_shared<StoreControl>();
    std::mutex mutex;
    std::vector<std::string> lines;
    std::unique_ptr<WriteThroughKeychain> keychain;
};

TEST_F(WriteThroughKeychainTest, ReadsWhatAnotherProgramHasChanged)
{
    open({{"a", secret("old")}, {"b", secret("gone")}});
    control->change([](Items& items) {
        items["a"] = secret("new");
        items.erase("b");
    });

    EXPECT_EQ(value("a"), "new");
    EXPECT_EQ(value("b"), std::nullopt);
    EXPECT_THAT(reported(), IsEmpty());
}

TEST_F(WriteThroughKeychainTest, AddIsInTheStoreWhenItReturnsFromAStoreThatAnswers)
{
    open();

    EXPECT_EQ(keychain->add("a", bytes("1")), KeychainStatus::NoError);
    control->waitForContent({{"a", secret("1")}});
    EXPECT_EQ(keychain->add("a", bytes("2")), KeychainStatus::DuplicateItem);
    EXPECT_EQ(value("a"), "1");
}

TEST_F(WriteThroughKeychainTest, HangingStoreIsAnsweredFromWhatIsKnown)
{
    open({{"a", secret("1")}}, BUDGET);
    control->become(Mode::Hanging);

    // The store hangs until the test lets it go: that this returns at all is what is checked.
    EXPECT_EQ(value("a"), "1");
    EXPECT_EQ(value("absent"), std::nullopt);
    EXPECT_EQ(keychain->add("a", bytes("2")), KeychainStatus::DuplicateItem);
    EXPECT_THAT(reported(), ElementsAre(HasSubstr("the store does not answer")));
    control->become(Mode::Answering);
}

TEST_F(WriteThroughKeychainTest, WritesToAHangingStoreCountAtOnceAndArriveInOrderLater)
{
    open({{"a", secret("1")}}, BUDGET);
    control->become(Mode::Hanging);

    EXPECT_EQ(keychain->remove("a"), KeychainStatus::NoError);
    EXPECT_EQ(keychain->add("a", bytes("2")), KeychainStatus::NoError);
    EXPECT_EQ(keychain->add("b", bytes("3")), KeychainStatus::NoError);
    EXPECT_EQ(value("a"), "2");
    EXPECT_EQ(value("b"), "3");
    EXPECT_EQ(control->content(), (Items{{"a", secret("1")}}));

    control->become(Mode::Answering);
    control->waitForContent({{"a", secret("2")}, {"b", secret("3")}});
    EXPECT_THAT(control->writeList(), ElementsAre("put a", "put b"));
}

TEST_F(WriteThroughKeychainTest, AnItemThatIsRemovedAndAddedAgainIsReplacedInOneStep)
{
    open({{"a", secret("old")}, {"b", secret("other")}});

    EXPECT_EQ(keychain->remove("a"), KeychainStatus::NoError);
    EXPECT_EQ(value("a"), std::nullopt);
    EXPECT_EQ(control->content().at("a"), secret("old"));
    EXPECT_EQ(keychain->add("a", bytes("new")), KeychainStatus::NoError);

    control->waitForContent({{"a", secret("new")}, {"b", secret("other")}});
    EXPECT_THAT(control->writeList(), ElementsAre("put a"));
}

TEST_F(WriteThroughKeychainTest, ARemovedItemThatDoesNotComeBackIsTakenOutOfTheStore)
{
    open({{"a", secret("1")}, {"b", secret("2")}});

    EXPECT_EQ(keychain->remove("a"), KeychainStatus::NoError);

    control->waitForContent({{"b", secret("2")}});
    EXPECT_THAT(control->writeList(), ElementsAre("erase a"));
}

TEST_F(WriteThroughKeychainTest, TheEndKeepsNoRemovalBack)
{
    open({{"a", secret("1")}});

    EXPECT_EQ(keychain->remove("a"), KeychainStatus::NoError);
    keychain.reset();

    EXPECT_EQ(control->content(), Items());
    EXPECT_THAT(reported(), IsEmpty());
}

TEST_F(WriteThroughKeychainTest, OutageIsReportedOnceAndItsEndToo)
{
    open({{"a", secret("1")}});
    control->become(Mode::Failing);
    EXPECT_EQ(value("a"), "1");
    EXPECT_EQ(value("a"), "1");
    EXPECT_EQ(keychain->remove("a"), KeychainStatus::NoError);
    EXPECT_THAT(reported(), ElementsAre(HasSubstr("the store fails")));

    control->become(Mode::Answering);
    control->waitForContent({});
    // Answered after the write's end was told, since the worker does one thing at a time.
    EXPECT_EQ(value("b"), std::nullopt);
    EXPECT_THAT(reported(), ElementsAre(HasSubstr("fails"), HasSubstr("answers again")));
}

TEST_F(WriteThroughKeychainTest, RefusedWriteIsTriedAgainWithoutAPromptUntilItIsTaken)
{
    open();
    control->become(Mode::Failing);
    EXPECT_EQ(keychain->add("a", bytes("1")), KeychainStatus::NoError);
    control->waitForCalls(4); // the question, the write, two more attempts
    control->become(Mode::Answering);

    control->waitForContent({{"a", secret("1")}});
    const auto writes = control->writeList();
    EXPECT_EQ(writes.front(), "put a");
    EXPECT_EQ(writes.back(), "put a (no prompt)");
}

TEST_F(WriteThroughKeychainTest, AnsweredQuestionsNeitherEndTheOutageOfAWriteNorHurryIt)
{
    open({{"b", secret("2")}});
    control->become(Mode::RefusingWrites);
    keychain->add("a", bytes("1"));

    for (int question = 0; question < 20; ++question) {
        EXPECT_EQ(value("b"), "2");
    }
    EXPECT_THAT(reported(), ElementsAre(HasSubstr("fails")));
    EXPECT_LT(control->writeList().size(), 10U) << "attempts wait, and longer each time";

    control->become(Mode::Answering);
    control->waitForContent({{"a", secret("1")}, {"b", secret("2")}});
}

TEST_F(WriteThroughKeychainTest, AbsenceThatIsNotProvenTakesNothingAway)
{
    open({{"a", secret("1")}});
    control->become(Mode::Unproven);

    EXPECT_EQ(value("a"), "1");
    EXPECT_EQ(value("b"), std::nullopt);
    EXPECT_THAT(reported(), IsEmpty());
}

TEST_F(WriteThroughKeychainTest, RemoveOfAnAbsentItemWritesNothing)
{
    open();

    EXPECT_EQ(keychain->remove("a"), KeychainStatus::ItemNotFound);
    EXPECT_THAT(control->writeList(), IsEmpty());
}

TEST_F(WriteThroughKeychainTest, RemoveAllSeesWhatAnotherProgramAdded)
{
    open();
    control->change([](Items& items) { items["a"] = secret("1"); });

    EXPECT_EQ(keychain->removeAll(), KeychainStatus::NoError);
    control->waitForContent({});
    EXPECT_EQ(keychain->removeAll(), KeychainStatus::ItemNotFound);
}

TEST_F(WriteThroughKeychainTest, LateAnswerUpdatesWhatIsKnown)
{
    open({{"a", secret("1")}}, BUDGET);
    control->become(Mode::Hanging);
    EXPECT_EQ(value("a"), "1");
    control->change([](Items& items) { items["a"] = secret("2"); });
    control->become(Mode::Answering);
    while (value("a") != "2") {
    }

    EXPECT_EQ(value("a"), "2");
}

TEST_F(WriteThroughKeychainTest, EndWaitsForAWriteThatTheStoreStillTakes)
{
    open({}, BUDGET);
    control->become(Mode::Hanging);
    EXPECT_EQ(keychain->add("a", bytes("1")), KeychainStatus::NoError);
    control->become(Mode::Answering);
    keychain.reset();

    EXPECT_EQ(control->content(), (Items{{"a", secret("1")}}));
}

TEST_F(WriteThroughKeychainTest, EndOverAHangingStoreComesAndSaysWhatIsLost)
{
    open({}, BUDGET);
    control->become(Mode::Hanging);
    EXPECT_EQ(keychain->add("a", bytes("1")), KeychainStatus::NoError);
    keychain.reset();

    EXPECT_THAT(reported().back(), HasSubstr("lost"));
    EXPECT_THAT(reported().back(), testing::Not(HasSubstr("1")));
}

} // namespace
} // namespace secretservice
