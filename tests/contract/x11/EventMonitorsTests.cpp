// What every implementation of the event monitors promises, asked of the fake and of real keys.
#include "X11World.h"
#include "fakes/FakeEventMonitors.h"
#include "platform/Port.h"

#include <vector>

#include <gtest/gtest.h>

namespace {

using Flags = std::vector<std::uint64_t>;

enum class Button
{
    Left,
    Middle,
    Right
};

constexpr std::uint64_t PRESSES =
    platform::EVENT_MASK_LEFT_MOUSE_DOWN | platform::EVENT_MASK_RIGHT_MOUSE_DOWN;

/// Modifier keys and mouse buttons that reach this program, or another one.
class World : public platform::Port
{
public:
    virtual platform::EventMonitors& monitors() = 0;
    virtual void keysAreOurs() = 0;
    virtual void pressOption() = 0;
    virtual void releaseOption() = 0;
    virtual void clickElsewhere(Button button) = 0;
    virtual bool soon(const std::function<bool()>& condition) = 0;
};

class FakeWorld final : public World
{
public:
    platform::EventMonitors& monitors() override { return fake; }

    void keysAreOurs() override { local = true; }

    void pressOption() override { send(platform::MODIFIER_FLAG_OPTION); }

    void releaseOption() override { send(0); }

    void clickElsewhere(Button button) override
    {
        if (button != Button::Middle) {
            fake.sendGlobalMouseDown(
                button == Button::Left ? platform::EVENT_MASK_LEFT_MOUSE_DOWN
                                       : platform::EVENT_MASK_RIGHT_MOUSE_DOWN
            );
        }
    }

    bool soon(const std::function<bool()>& condition) override { return condition(); }

private:
    void send(std::uint64_t flags) const
    {
        if (local) {
            fake.sendLocalFlagsChanged(flags);
        } else {
            fake.sendGlobalFlagsChanged(flags);
        }
    }

    fakes::Calls calls;
    fakes::FakeEventMonitors fake{calls};
    bool local = false;
};

class RealWorld final : public World
{
public:
    platform::EventMonitors& monitors() override { return world.eventMonitors; }

    void keysAreOurs() override
    {
        world.application.setPresentationOptions(X11World::LOCKED);
        ASSERT_TRUE(world.capturedSoon());
    }

    void pressOption() override { world.session.input().hold(desktop::KEY_ALT); }

    void releaseOption() override { world.session.input().release(desktop::KEY_ALT); }

    void clickElsewhere(Button button) override
    {
        world.session.input().click(
            40, 40, static_cast<std::uint8_t>(static_cast<int>(button) + 1)
        );
    }

    bool soon(const std::function<bool()>& condition) override
    {
        return world.mainLoop.runUntil(condition);
    }

private:
    X11World world;
};

template <typename W> class EventMonitorsContract : public testing::Test
{
protected:
    platform::EventMonitorHandle addLocal()
    {
        return world.monitors().addLocalMonitor(
            platform::EVENT_MASK_FLAGS_CHANGED,
            [this](const platform::Event& event) { local.push_back(event.modifierFlags); }
        );
    }

    platform::EventMonitorHandle addGlobal()
    {
        return world.monitors().addGlobalMonitor(
            platform::EVENT_MASK_FLAGS_CHANGED,
            [this](const platform::Event& event) { global.push_back(event.modifierFlags); }
        );
    }

    W world;
    Flags local;
    Flags global;
    const Flags pressedAndReleased{platform::MODIFIER_FLAG_OPTION, 0};
};

using Worlds = testing::Types<FakeWorld, RealWorld>;
TYPED_TEST_SUITE(EventMonitorsContract, Worlds);

TYPED_TEST(EventMonitorsContract, KeysOfOthersGoToGlobalMonitorsOnly)
{
    this->addLocal();
    this->addGlobal();
    this->world.pressOption();
    this->world.releaseOption();
    ASSERT_TRUE(this->world.soon([&] { return this->global.size() >= 2; }));
    EXPECT_EQ(this->pressedAndReleased, this->global);
    EXPECT_EQ(Flags{}, this->local);
}

TYPED_TEST(EventMonitorsContract, KeysOfThisProgramGoToLocalMonitorsOnly)
{
    this->world.keysAreOurs();
    this->addLocal();
    this->addGlobal();
    this->world.pressOption();
    this->world.releaseOption();
    ASSERT_TRUE(this->world.soon([&] { return this->local.size() >= 2; }));
    EXPECT_EQ(this->pressedAndReleased, this->local);
    EXPECT_EQ(Flags{}, this->global);
}

TYPED_TEST(EventMonitorsContract, ARemovedMonitorIsNotCalledAnyMore)
{
    const auto removed = this->addGlobal();
    this->world.pressOption();
    ASSERT_TRUE(this->world.soon([&] { return this->global.size() == 1; }));
    this->world.monitors().removeMonitor(removed);
    Flags other;
    this->world.monitors().addGlobalMonitor(
        platform::EVENT_MASK_FLAGS_CHANGED,
        [&](const platform::Event& event) { other.push_back(event.modifierFlags); }
    );
    this->world.releaseOption();
    ASSERT_TRUE(this->world.soon([&] { return !other.empty(); }));
    EXPECT_EQ(Flags{platform::MODIFIER_FLAG_OPTION}, this->global);
}

TYPED_TEST(EventMonitorsContract, AMonitorMayRemoveItselfAndOthersWhileItIsCalled)
{
    platform::EventMonitorHandle second = 0;
    int secondCalls = 0;
    int firstCalls = 0;
    platform::EventMonitorHandle first = 0;
    first = this->world.monitors().addGlobalMonitor(
        platform::EVENT_MASK_FLAGS_CHANGED,
        [&](const platform::Event& /*event*/) {
            ++firstCalls;
            this->world.monitors().removeMonitor(first);
        }
    );
    second = this->world.monitors().addGlobalMonitor(
        platform::EVENT_MASK_FLAGS_CHANGED, [&](const platform::Event& /*event*/) { ++secondCalls; }
    );
    this->world.pressOption();
    this->world.releaseOption();
    ASSERT_TRUE(this->world.soon([&] { return secondCalls == 2; }));
    EXPECT_EQ(1, firstCalls);
    this->world.monitors().removeMonitor(second);
}

TYPED_TEST(EventMonitorsContract, OtherMasksAndUnknownHandlesAreIgnored)
{
    int calls = 0;
    this->world.monitors().addGlobalMonitor(1, [&](const platform::Event& /*event*/) { ++calls; });
    this->world.monitors().removeMonitor(987654);
    this->addGlobal();
    this->world.pressOption();
    ASSERT_TRUE(this->world.soon([&] { return this->global.size() == 1; }));
    EXPECT_EQ(0, calls);
}

TYPED_TEST(EventMonitorsContract, ButtonsPressedElsewhereGoToTheGlobalMonitorsThatAskForThem)
{
    int any = 0;
    int right = 0;
    int local = 0;
    const auto count = [](int& counter) {
        return [&counter](const platform::Event& /*event*/) { ++counter; };
    };
    auto& monitors = this->world.monitors();
    monitors.addGlobalMonitor(PRESSES, count(any));
    monitors.addGlobalMonitor(platform::EVENT_MASK_RIGHT_MOUSE_DOWN, count(right));
    monitors.addLocalMonitor(PRESSES, count(local));
    this->addGlobal();
    for (const Button button : {Button::Left, Button::Middle, Button::Right}) {
        this->world.clickElsewhere(button);
    }
    ASSERT_TRUE(this->world.soon([&] { return any >= 2 && right >= 1; }));
    EXPECT_EQ(2, any);
    EXPECT_EQ(1, right);
    EXPECT_EQ(0, local);
    EXPECT_EQ(Flags{}, this->global);
}

TYPED_TEST(EventMonitorsContract, ButtonsAreHeardAgainAfterNobodyListened)
{
    int calls = 0;
    const auto handler = [&](const platform::Event& /*event*/) { ++calls; };
    const auto first = this->world.monitors().addGlobalMonitor(PRESSES, handler);
    this->world.monitors().removeMonitor(first);
    this->world.monitors().addGlobalMonitor(PRESSES, handler);
    this->world.clickElsewhere(Button::Left);
    ASSERT_TRUE(this->world.soon([&] { return calls >= 1; }));
    EXPECT_EQ(1, calls);
}

TEST(X11EventMonitors, EveryModifierHasItsFlag)
{
    X11World world;
    Flags seen;
    world.eventMonitors.addGlobalMonitor(
        platform::EVENT_MASK_FLAGS_CHANGED,
        [&](const platform::Event& event) { seen.push_back(event.modifierFlags); }
    );
    auto& input = world.session.input();
    for (const std::uint32_t key :
         {desktop::KEY_SHIFT, desktop::KEY_CONTROL, desktop::KEY_SUPER, desktop::KEY_CAPS_LOCK}) {
        input.press(key);
    }
    const Flags expected{
        platform::MODIFIER_FLAG_SHIFT,
        0,
        platform::MODIFIER_FLAG_CONTROL,
        0,
        platform::MODIFIER_FLAG_COMMAND,
        0,
        platform::MODIFIER_FLAG_CAPS_LOCK, // stays on
    };
    ASSERT_TRUE(world.mainLoop.runUntil([&] { return seen.size() >= expected.size(); }));
    EXPECT_EQ(expected, seen);
}

TEST(X11EventMonitors, LettersAreNoChangeOfModifiers)
{
    X11World world;
    Flags seen;
    world.eventMonitors.addGlobalMonitor(
        platform::EVENT_MASK_FLAGS_CHANGED,
        [&](const platform::Event& event) { seen.push_back(event.modifierFlags); }
    );
    world.session.input().type("abc");
    world.session.input().press(desktop::KEY_ALT);
    ASSERT_TRUE(world.mainLoop.runUntil([&] { return seen.size() >= 2; }));
    EXPECT_EQ((Flags{platform::MODIFIER_FLAG_OPTION, 0}), seen);
}

} // namespace
