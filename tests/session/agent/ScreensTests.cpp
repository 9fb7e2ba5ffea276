#include "session/agent/AgentTest.h"

#include <vector>

namespace agent {

class LockedScreens : public AgentTest
{
protected:
    void SetUp() override
    {
        watch({TERMINAL});
        xterm = std::make_unique<Recorder>(session->desk);
        ASSERT_TRUE(locks());
    }

    void TearDown() override
    {
        AgentTest::TearDown();
        xterm.reset();
    }

    /// Whether the lock, after this change, covers every screen, has its controls on the main one
    /// and lets the password in.
    bool holdsOn(const std::vector<desktop::Rectangle>& screens) const
    {
        session->desk.server().setScreens(screens);
        return session->waitForCover() && coverStaysFor(4s) && showsControls(session->desk) &&
               opensWithThePassword();
    }

    std::unique_ptr<Recorder> xterm;
};

TEST_F(LockedScreens, MayGrowInNumber)
{
    EXPECT_TRUE(holdsOn({{0, 0, 1280, 720}, {1280, 0, 1280, 720}, {2560, 0, 1024, 768}}));
}

TEST_F(LockedScreens, MayBecomeOne)
{
    EXPECT_TRUE(holdsOn({{0, 0, 1280, 720}}));
}

TEST_F(LockedScreens, MayChangeTheirSize)
{
    EXPECT_TRUE(holdsOn({{0, 0, 1920, 1080}, {1920, 0, 1600, 1200}}));
}

TEST_F(LockedScreens, MayLeaveForAnotherMainScreen)
{
    EXPECT_TRUE(holdsOn({{1280, 0, 1280, 720}, {0, 0, 1280, 720}}));
}

} // namespace agent
