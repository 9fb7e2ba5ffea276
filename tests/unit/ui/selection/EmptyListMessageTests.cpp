#include "ui/windows/selection/EmptyListMessage.h"

#include <gtest/gtest.h>

namespace {

constexpr bool LIST_IS_EMPTY = true;
constexpr bool RUNNING_ONLY = true;
constexpr bool SOME_ARE_PROTECTED = true;

QString heading(const QString& filter, bool listIsEmpty, bool runningOnly, bool someAreProtected)
{
    return ui::emptyListMessage(filter, listIsEmpty, runningOnly, someAreProtected).heading;
}

} // namespace

TEST(EmptyListMessage, NamesTheFilterThatNothingMatches)
{
    EXPECT_EQ(heading("abc", !LIST_IS_EMPTY, !RUNNING_ONLY, false), "Nothing matches “abc”");
    EXPECT_EQ(heading("abc", !LIST_IS_EMPTY, RUNNING_ONLY, true), "Nothing matches “abc”");
}

TEST(EmptyListMessage, DoesNotNameAllOfALongFilter)
{
    EXPECT_LT(heading(QString(500, 'x'), !LIST_IS_EMPTY, !RUNNING_ONLY, false).size(), 70);
}

TEST(EmptyListMessage, TellsWhatIsProtectedFromWhatIsNotThere)
{
    EXPECT_EQ(
        heading("", LIST_IS_EMPTY, !RUNNING_ONLY, SOME_ARE_PROTECTED),
        "Everything here is protected"
    );
    EXPECT_EQ(
        heading("", LIST_IS_EMPTY, RUNNING_ONLY, SOME_ARE_PROTECTED),
        "Everything that runs is protected"
    );
    EXPECT_EQ(
        heading("", LIST_IS_EMPTY, !RUNNING_ONLY, !SOME_ARE_PROTECTED), "No applications found"
    );
    EXPECT_EQ(
        heading("", LIST_IS_EMPTY, RUNNING_ONLY, !SOME_ARE_PROTECTED), "No application is running"
    );
}

TEST(EmptyListMessage, DoesNotBlameTheFilterForAListThatIsEmptyAnyway)
{
    EXPECT_EQ(
        heading("abc", LIST_IS_EMPTY, RUNNING_ONLY, !SOME_ARE_PROTECTED),
        "No application is running"
    );
}

TEST(EmptyListMessage, AlwaysSaysWhatToDoNext)
{
    for (const bool listIsEmpty : {false, true}) {
        for (const bool runningOnly : {false, true}) {
            for (const bool someAreProtected : {false, true}) {
                EXPECT_FALSE(ui::emptyListMessage("x", listIsEmpty, runningOnly, someAreProtected)
                                 .hint.isEmpty());
            }
        }
    }
}
