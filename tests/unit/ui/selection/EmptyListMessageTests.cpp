#include "ui/windows/selection/EmptyListMessage.h"

#include <gtest/gtest.h>

namespace {

QString heading(const ui::EmptyListCause& cause)
{
    return ui::emptyListMessage(cause).heading;
}

} // namespace

TEST(EmptyListMessage, NamesTheFilterThatNothingMatches)
{
    EXPECT_EQ(heading({.filter = "abc"}), "Nothing matches “abc”");
    EXPECT_EQ(
        heading({.filter = "abc", .runningApplicationsOnly = true, .someAreProtected = true}),
        "Nothing matches “abc”"
    );
}

TEST(EmptyListMessage, DoesNotNameAllOfALongFilter)
{
    EXPECT_LT(heading({.filter = QString(500, 'x')}).size(), 70);
}

TEST(EmptyListMessage, TellsWhatIsProtectedFromWhatIsNotThere)
{
    EXPECT_EQ(
        heading({.listIsEmpty = true, .someAreProtected = true}), "Everything here is protected"
    );
    EXPECT_EQ(
        heading({.listIsEmpty = true, .runningApplicationsOnly = true, .someAreProtected = true}),
        "Everything that runs is protected"
    );
    EXPECT_EQ(heading({.listIsEmpty = true}), "No applications found");
    EXPECT_EQ(
        heading({.listIsEmpty = true, .runningApplicationsOnly = true}), "No application is running"
    );
}

TEST(EmptyListMessage, DoesNotBlameTheFilterForAListThatIsEmptyAnyway)
{
    EXPECT_EQ(
        heading({.filter = "abc", .listIsEmpty = true, .runningApplicationsOnly = true}),
        "No application is running"
    );
}

TEST(EmptyListMessage, AlwaysSaysWhatToDoNext)
{
    for (const bool listIsEmpty : {false, true}) {
        for (const bool runningOnly : {false, true}) {
            for (const bool someAreProtected : {false, true}) {
                const ui::EmptyListCause cause{"x", listIsEmpty, runningOnly, someAreProtected};
                EXPECT_FALSE(ui::emptyListMessage(cause).hint.isEmpty());
            }
        }
    }
}
