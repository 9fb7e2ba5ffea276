// The special key, and the fight for the focus.
#include "LockWindowTest.h"

namespace {

using PasswordWindowFocus = LockWindowTest;

constexpr std::uint64_t OPTION = platform::MODIFIER_FLAG_OPTION;

} // namespace

TEST_F(PasswordWindowFocus, OptionCallsBackOncePerFlagsChangeThatHasItDown)
{
    show();
    fake.eventMonitors.sendLocalFlagsChanged(OPTION);
    EXPECT_EQ(specialKeyPresses, 1);
    fake.eventMonitors.sendLocalFlagsChanged(0); // released
    EXPECT_EQ(specialKeyPresses, 1);
    fake.eventMonitors.sendLocalFlagsChanged(OPTION | platform::MODIFIER_FLAG_SHIFT);
    EXPECT_EQ(specialKeyPresses, 2);
}

TEST_F(PasswordWindowFocus, OptionCountsWhoeverGetsTheEvent)
{
    show();
    fake.eventMonitors.sendGlobalFlagsChanged(OPTION);

    EXPECT_EQ(specialKeyPresses, 1);
}

TEST_F(PasswordWindowFocus, NoOtherModifierCounts)
{
    show();
    for (const std::uint64_t flag :
         {platform::MODIFIER_FLAG_CAPS_LOCK,
          platform::MODIFIER_FLAG_SHIFT,
          platform::MODIFIER_FLAG_CONTROL,
          platform::MODIFIER_FLAG_COMMAND}) {
        fake.eventMonitors.sendLocalFlagsChanged(flag);
        fake.eventMonitors.sendGlobalFlagsChanged(flag);
    }
    EXPECT_EQ(specialKeyPresses, 0);

    deactivated(AGENT);
    EXPECT_EQ(fake.dispatchQueues.main.size(), 1U);
}

TEST_F(PasswordWindowFocus, AnUnsetCallbackDropsTheSpecialKey)
{
    show();
    controller->specialKeyPressed = nullptr;
    fake.eventMonitors.sendLocalFlagsChanged(OPTION);
    deactivated(AGENT);

    EXPECT_TRUE(fake.dispatchQueues.main.empty());
}

TEST_F(PasswordWindowFocus, TheAgentTakesTheFocusBackWhenItLosesIt)
{
    show();
    takeCalls();
    deactivated(AGENT);
    activated(CALCULATOR);
    fake.dispatchQueues.runAll();

    EXPECT_EQ(
        takeCalls(), (fakes::Calls{"window 1 makeKeyAndOrderFront", "application activate true"})
    );
}

TEST_F(PasswordWindowFocus, AnotherApplicationThatLosesTheFocusIsLeftAlone)
{
    show();
    deactivated(CALCULATOR);

    EXPECT_TRUE(fake.dispatchQueues.main.empty());
}

TEST_F(PasswordWindowFocus, AfterTheSpecialKeyTheAgentDoesNotFightUntilItIsActiveAgain)
{
    show();
    fake.eventMonitors.sendLocalFlagsChanged(OPTION);
    deactivated(AGENT);
    activated(CALCULATOR); // not the agent: nothing changes
    deactivated(AGENT);
    EXPECT_TRUE(fake.dispatchQueues.main.empty());

    activated(AGENT);
    deactivated(AGENT);
    EXPECT_EQ(fake.dispatchQueues.main.size(), 1U);
}

TEST_F(PasswordWindowFocus, ANotificationWithoutAnApplicationIsNobodys)
{
    show();
    const auto name = platform::WorkspaceNotificationName::DidDeactivateApplication;
    fake.workspace.notify({name, std::nullopt});
    fake.workspace.notify({name, platform::UserInfo{}});
    fake.workspace.notify(
        {name, platform::UserInfo{{platform::WORKSPACE_APPLICATION_KEY, std::string(AGENT)}}}
    );
    fake.workspace.notify(
        {name,
         platform::UserInfo{{platform::WORKSPACE_APPLICATION_KEY, platform::RunningApplication{}}}}
    );

    EXPECT_TRUE(fake.dispatchQueues.main.empty());
}

TEST_F(PasswordWindowFocus, NothingIsHeardAfterTeardown)
{
    show();
    controller->teardown();
    fake.eventMonitors.sendLocalFlagsChanged(OPTION);
    fake.eventMonitors.sendGlobalFlagsChanged(OPTION);
    deactivated(AGENT);

    EXPECT_EQ(specialKeyPresses, 0);
    EXPECT_TRUE(fake.dispatchQueues.main.empty());
}
