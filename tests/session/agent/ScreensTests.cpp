#include "desktop/Pixels.h"
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

    /// Whether the lock, from this change on, hides all else, for longer than it takes until the
    /// screens are looked at again.
    bool hidesAllOn(const std::vector<desktop::Rectangle>& screens) const
    {
        paintDesktop();
        session->desk.server().setScreens(screens);
        return desktop::holdsFor([this] { return !showsDesktop(); }, 4s);
    }

    /// Whether the controls are in the middle of the main screen and nothing else is anywhere.
    bool isWhole() const { return isCovered(session->desk) && showsControls(session->desk); }

private:
    /// Gives the ground of the desktop a colour that nothing else has.
    void paintDesktop() const
    {
        desktop::XConnection& connection = session->desk.connection();
        xcb_change_window_attributes(
            connection.get(), connection.root(), XCB_CW_BACK_PIXEL, &GROUND
        );
        xcb_clear_area(connection.get(), 0, connection.root(), 0, 0, 0, 0);
        connection.sync();
    }

    [[nodiscard]] bool showsDesktop() const
    {
        desktop::XConnection& connection = session->desk.connection();
        const auto all = session->desk.windows().placeOf(connection.root());
        const auto seen = desktop::capture(connection, all);
        return seen.contains(GROUND) || seen.contains(Recorder::PAPER);
    }

    static constexpr desktop::Pixel GROUND = 0x00FF01;

    std::unique_ptr<Recorder> xterm;
};

TEST_F(LockedScreens, MayGrowInNumber)
{
    EXPECT_TRUE(hidesAllOn({{0, 0, 1280, 720}, {1280, 0, 1280, 720}, {2560, 0, 1024, 768}}));
    EXPECT_TRUE(isWhole());
    EXPECT_TRUE(opensWithThePassword());
}

TEST_F(LockedScreens, MayBecomeOne)
{
    EXPECT_TRUE(hidesAllOn({{0, 0, 1280, 720}}));
    EXPECT_TRUE(isWhole());
    EXPECT_TRUE(opensWithThePassword());
}

TEST_F(LockedScreens, MayChangeTheirSize)
{
    EXPECT_TRUE(hidesAllOn({{0, 0, 1920, 1080}, {1920, 0, 1600, 1200}}));
    EXPECT_TRUE(isWhole());
    EXPECT_TRUE(opensWithThePassword());
}

TEST_F(LockedScreens, MayChangePlaces)
{
    EXPECT_TRUE(hidesAllOn({{1280, 0, 1280, 720}, {0, 0, 1280, 720}}));
    EXPECT_TRUE(isWhole());
    EXPECT_TRUE(opensWithThePassword());
}

} // namespace agent
