// What the logic may rely on of the keyboard's status: the one that it is tested with, and X11's.
#include "X11World.h"
#include "fakes/FakeKeyboardStatus.h"

#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

class InMemory
{
public:
    platform::KeyboardStatus& status() { return fake; }

    void toggleCapsLock() { fake.set(!fake.capsLockOn(), fake.layoutName()); }

    void setLayouts(const std::vector<std::string>& names) { fake.setLayouts(names); }

    static bool soon(const std::function<bool()>& condition) { return condition(); }

private:
    fakes::FakeKeyboardStatus fake;
};

class OnX11
{
public:
    platform::KeyboardStatus& status() { return world.keyboardStatus; }

    void toggleCapsLock() { world.session.input().press(desktop::KEY_CAPS_LOCK); }

    void setLayouts(const std::vector<std::string>& names)
    {
        std::string list;
        for (const std::string& name : names) {
            list += (list.empty() ? "" : ",") + name;
        }
        auto process = world.session.start({"setxkbmap", "-layout", list});
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
    this->subject.setLayouts({"de"});
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

TYPED_TEST(KeyboardStatusContract, ALayoutAloneHasNoNext)
{
    EXPECT_FALSE(this->status.hasSeveralLayouts());
    this->status.nextLayout();
    this->subject.toggleCapsLock();
    EXPECT_TRUE(this->subject.soon([this] { return this->status.capsLockOn(); }));
    EXPECT_EQ(this->status.layoutName(), "us");
}

TYPED_TEST(KeyboardStatusContract, TellsThatThereIsAnotherLayoutAlsoWhereTheActiveOneStays)
{
    bool several = false;
    this->status.observe([&] { several = this->status.hasSeveralLayouts(); });
    this->subject.setLayouts({"us", "ru"});
    EXPECT_TRUE(this->subject.soon([&] { return several; }));
    EXPECT_EQ(this->status.layoutName(), "us");
}

TYPED_TEST(KeyboardStatusContract, SwitchesToTheNextLayoutAndAfterTheLastToTheFirst)
{
    this->subject.setLayouts({"us", "ru", "gr"});
    ASSERT_TRUE(this->subject.soon([this] { return this->status.hasSeveralLayouts(); }));
    std::string seen;
    this->status.observe([&] { seen = this->status.layoutName(); });
    for (const std::string next : {"ru", "gr", "us"}) {
        this->status.nextLayout();
        EXPECT_TRUE(this->subject.soon([&] { return seen == next; })) << next << ", not " << seen;
    }
}
