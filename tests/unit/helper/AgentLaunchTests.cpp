#include "helper/AgentLaunch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

TEST(AgentLaunch, AgentStandsAtTheTopOfTheBundleThatHoldsTheHelper)
{
    EXPECT_EQ(
        helper::agentPath("/opt/Tarvel.app/Contents/Library/LoginItems/OlvoHelper.app/OlvoHelper"),
        "/opt/Tarvel.app/Tarvel"
    );
}

TEST(AgentLaunch, PathStaysThatOfTheBundleWhenTheHelperWasReplacedMeanwhile)
{
    EXPECT_EQ(
        helper::agentPath(
            "/opt/Tarvel.app/Contents/Library/LoginItems/OlvoHelper.app/OlvoHelper (deleted)"
        ),
        "/opt/Tarvel.app/Tarvel"
    );
}

TEST(AgentLaunch, OneArgumentSaysThatNobodyAskedToSeeTheAgent)
{
    EXPECT_THAT(
        helper::agentArguments("/opt/Tarvel.app/Tarvel", 4711),
        ElementsAre("/opt/Tarvel.app/Tarvel", "-psn_0_4711")
    );
}

TEST(AgentLaunch, EnvironmentLosesOnlyWhatSpeaksOfTheHelpersOwnStart)
{
    EXPECT_THAT(
        helper::agentEnvironment(
            {"HOME=/home/a",
             "StartFromMaster=1",
             "DISPLAY=:0",
             "XDG_ACTIVATION_TOKEN=t",
             "DESKTOP_STARTUP_ID=x",
             "StartFromMasterToo=1",
             "EMPTY="}
        ),
        ElementsAre("HOME=/home/a", "DISPLAY=:0", "StartFromMasterToo=1", "EMPTY=")
    );
}
