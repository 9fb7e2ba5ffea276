#include "Secrets.h"
#include "linux/secretservice/KnownItems.h"

#include <gtest/gtest.h>

namespace secretservice {
namespace {

using State = ItemRead::State;

TEST(KnownItems, WriteCountsAtOnceAndWaitsForTheKeeper)
{
    KnownItems known({});
    const auto id = known.put("a", secret("1"));

    ASSERT_NE(known.find("a"), nullptr);
    EXPECT_EQ(text(*known.find("a")), "1");
    EXPECT_TRUE(known.isPending(id));
    const PendingWrite write = known.start();
    EXPECT_EQ(write.account, "a");
    EXPECT_EQ(text(write.data), "1");
    known.finish(write.id, true);
    EXPECT_EQ(known.pendingCount(), 0U);
}

TEST(KnownItems, EraseTakesTheItemAwayAtOnce)
{
    KnownItems known({{"a", secret("1")}});
    known.erase("a");

    EXPECT_EQ(known.find("a"), nullptr);
    EXPECT_EQ(known.start().kind, PendingWrite::Kind::Erase);
}

TEST(KnownItems, WritesOfDifferentAccountsKeepTheirOrder)
{
    KnownItems known({});
    known.put("a", secret("1"));
    known.put("b", secret("2"));

    const PendingWrite first = known.start();
    EXPECT_EQ(first.account, "a");
    known.finish(first.id, true);
    EXPECT_EQ(known.start().account, "b");
}

TEST(KnownItems, NewerWriteReplacesTheWaitingOneOfItsAccount)
{
    KnownItems known({});
    known.put("a", secret("1"));
    known.put("b", secret("2"));
    known.erase("a");
    known.put("a", secret("3"));

    EXPECT_EQ(known.pendingCount(), 2U);
    const PendingWrite first = known.start();
    EXPECT_EQ(first.account, "b");
    known.finish(first.id, true);
    EXPECT_EQ(text(known.start().data), "3");
}

TEST(KnownItems, StartedWriteIsNotReplacedButFollowed)
{
    KnownItems known({});
    known.put("a", secret("1"));
    const PendingWrite first = known.start();
    known.put("a", secret("2"));

    EXPECT_EQ(known.pendingCount(), 2U);
    known.finish(first.id, true);
    EXPECT_EQ(text(known.start().data), "2");
}

TEST(KnownItems, FailedWriteStaysInItsPlace)
{
    KnownItems known({});
    known.put("a", secret("1"));
    known.put("b", secret("2"));
    const PendingWrite first = known.start();
    known.finish(first.id, false);

    EXPECT_EQ(known.start().id, first.id);
}

TEST(KnownItems, FailedWriteThatIsOutdatedIsDropped)
{
    KnownItems known({});
    known.put("a", secret("1"));
    const PendingWrite first = known.start();
    known.put("a", secret("2"));
    known.finish(first.id, false);

    EXPECT_EQ(known.pendingCount(), 1U);
    EXPECT_EQ(text(known.start().data), "2");
}

TEST(KnownItems, EraseAllReplacesEveryWaitingWriteAndConcernsEveryAccount)
{
    KnownItems known({{"a", secret("1")}});
    known.put("b", secret("2"));
    known.eraseAll();

    EXPECT_TRUE(known.isEmpty());
    EXPECT_EQ(known.pendingCount(), 1U);
    EXPECT_TRUE(known.isPending("never seen"));
}

TEST(KnownItems, PutAfterEraseAllDoesNotReplaceIt)
{
    KnownItems known({{"a", secret("1")}});
    known.eraseAll();
    known.put("a", secret("2"));

    EXPECT_EQ(known.pendingCount(), 2U);
    EXPECT_EQ(known.start().kind, PendingWrite::Kind::EraseAll);
}

TEST(KnownItems, LearnsWhatTheKeeperFoundAndWhatIsMissingThere)
{
    KnownItems known({{"a", secret("1")}, {"b", secret("2")}});
    known.learn("a", {.state = State::Found, .data = secret("new")});
    known.learn("b", {.state = State::Missing});

    EXPECT_EQ(text(*known.find("a")), "new");
    EXPECT_EQ(known.find("b"), nullptr);
}

TEST(KnownItems, NeitherAFailureNorAnUnprovenAbsenceTakesAnItemAway)
{
    KnownItems known({{"a", secret("1")}});
    known.learn("a", {.state = State::Unproven});
    known.learn("a", {.state = State::Failed, .reason = "is locked"});

    ASSERT_NE(known.find("a"), nullptr);
    EXPECT_EQ(text(*known.find("a")), "1");
}

TEST(KnownItems, AnswerOlderThanAPendingWriteIsIgnored)
{
    KnownItems known({{"a", secret("1")}, {"b", secret("2")}});
    known.put("a", secret("newer"));
    known.erase("b");
    known.learn("a", {.state = State::Missing});
    known.learnAll({{"a", secret("1")}, {"b", secret("2")}, {"c", secret("3")}});

    EXPECT_EQ(text(*known.find("a")), "newer");
    EXPECT_EQ(known.find("b"), nullptr);
    EXPECT_EQ(text(*known.find("c")), "3");
}

TEST(KnownItems, LearningAllForgetsWhatIsGone)
{
    KnownItems known({{"a", secret("1")}});
    known.learnAll({});

    EXPECT_TRUE(known.isEmpty());
}

} // namespace
} // namespace secretservice
