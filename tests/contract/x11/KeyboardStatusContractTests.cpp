// What the logic may rely on of the keyboard's status: the one that it is tested with, and X11's.
#include "X11World.h"
#include "fakes/FakeKeyboardStatus.h"

#include <chrono>
#include <functional>
#include <string>

#include <gtest/gtest.h>

namespace {

class InMemory
{
public:
    platform::KeyboardStatus& status() { return fake; }

    void toggleCapsLock() { fake.set(!fake.capsLockOn(), fake.layoutName()); }

    void setLayout(const std::string& name) { fake.set(fake.capsLockOn(), name); }

    static bool soon(const std::function<bool()>& condition) { return condition(); }

private:
    fakes::FakeKeyboardStatus fake;
};

class OnX11
{
public:
    platform::KeyboardStatus& status() { return world.keyboardStatus; }

    void toggleCapsLock() { world.session.input().press(desktop::KEY_CAPS_LOCK); }

    void setLayout(const std::string& name)
    {
        auto process = world.session.start({"setxkbmap", "-layout", name});
        EXPECT_EQ(0, process.waitForExitStatus(std::chrono::seconds(10)));
    }

    bool soon(const std::function<bool()>& condition) { return world.mainLoop.runUntil(condition); }

private:
    X11World world;
};

template <typename Subject> class KeyboardStatusContract : public testing::Test
{
protected:
    Subject subject;
    platform::KeyboardStatus& status = subject.status();
};

using Subjects = testing::Types<InMemory, OnX11>;
TYPED_TEST_SUITE(KeyboardStatusContract, Subjects);

} // namespace

TYPED_TEST(KeyboardStatusContract, IsKnownFromTheBeginning)
{
    EXPECT_FALSE(this->status.capsLockOn());
    EXPECT_EQ(this->status.layoutName(), "us");
}

TYPED_TEST(KeyboardStatusContract, TellsAfterAChangeAndHasItByThen)
{
    std::string seen;
    this->status.observe([&] {
        seen = this->status.layoutName() + (this->status.capsLockOn() ? " caps" : "");
    });
    this->subject.toggleCapsLock();
    EXPECT_TRUE(this->subject.soon([&] { return seen == "us caps"; })) << seen;
    this->subject.toggleCapsLock();
    EXPECT_TRUE(this->subject.soon([&] { return seen == "us"; })) << seen;
    this->subject.setLayout("de");
    EXPECT_TRUE(this->subject.soon([&] { return seen == "de"; })) << seen;
}

TYPED_TEST(KeyboardStatusContract, HasOneHandlerWhichTheNextReplaces)
{
    int first = 0;
    int second = 0;
    this->status.observe([&first] { ++first; });
    this->status.observe([&second] { ++second; });
    this->subject.toggleCapsLock();
    EXPECT_TRUE(this->subject.soon([&second] { return second > 0; }));
    EXPECT_EQ(first, 0);
}

TYPED_TEST(KeyboardStatusContract, GoesOnWithoutAHandler)
{
    int changes = 0;
    this->status.observe([&changes] { ++changes; });
    this->status.observe(nullptr);
    this->subject.toggleCapsLock();
    EXPECT_TRUE(this->subject.soon([this] { return this->status.capsLockOn(); }));
    EXPECT_EQ(changes, 0);
}

TYPED_TEST(KeyboardStatusContract, AHandlerMayTakeItselfAway)
{
    int changes = 0;
    this->status.observe([&] {
        ++changes;
        this->status.observe(nullptr);
    });
    this->subject.toggleCapsLock();
    EXPECT_TRUE(this->subject.soon([&changes] { return changes == 1; }));
    this->subject.toggleCapsLock();
    EXPECT_TRUE(this->subject.soon([this] { return !this->status.capsLockOn(); }));
    EXPECT_EQ(changes, 1);
}
