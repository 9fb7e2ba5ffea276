#include "helper/TerminationNotice.h"

#include <gtest/gtest.h>

using helper::TerminationNotice;

TEST(TerminationNotice, IsTheNameWithTheAgentAsObject)
{
    EXPECT_TRUE(TerminationNotice::matches("TERMINATE_HELPER_TARVEL", "com.quorvent.Tarvel"));
}

TEST(TerminationNotice, OtherObjectsAreSomebodyElses)
{
    for (const char* object :
         {"",
          "com.quorvent.Tarve",
          "com.quorvent.Tarvel2",
          "com.quorvent.tarvel",
          " com.quorvent.Tarvel",
          "com.quorvent.OlvoHelper"}) {
        EXPECT_FALSE(TerminationNotice::matches("TERMINATE_HELPER_TARVEL", object)) << object;
    }
}

TEST(TerminationNotice, OtherNamesAreOtherNotices)
{
    for (const char* name : {"", "TERMINATE_HELPER", "terminate_helper_tarvel"}) {
        EXPECT_FALSE(TerminationNotice::matches(name, "com.quorvent.Tarvel")) << name;
    }
}
