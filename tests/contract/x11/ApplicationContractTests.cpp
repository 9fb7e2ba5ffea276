// What the logic may rely on when it sets presentation options: the application that it is tested
// with, and X11's.
#include "X11World.h"
#include "fakes/FakeApplication.h"

#include <gtest/gtest.h>

namespace {

class InMemory
{
public:
    platform::Application& application() { return fake; }

    bool isHeld() const
    {
        return (fake.presentationOptions & platform::PRESENTATION_DISABLE_PROCESS_SWITCHING) != 0;
    }

    bool becomes(bool held) const { return isHeld() == held; }

    bool endsItsTurn() const { return true; }

private:
    fakes::Calls calls;
    fakes::FakeApplication fake{calls};
};

class OnX11
{
public:
    platform::Application& application() { return world.application; }

    bool isHeld() const { return world.guard.captured(); }

    bool becomes(bool held)
    {
        return world.mainLoop.runUntil([&] { return isHeld() == held; });
    }

    bool endsItsTurn() { return world.mainLoop.runsDry(); }

private:
    X11World world;
};

template <typename Subject> class ApplicationContract : public testing::Test
{
protected:
    Subject subject;
    platform::Application& application = subject.application();
};

using Subjects = testing::Types<InMemory, OnX11>;
TYPED_TEST_SUITE(ApplicationContract, Subjects);

} // namespace

TYPED_TEST(ApplicationContract, TheLocksOptionsHoldTheInputUntilTheDefaultOnesComeBack)
{
    this->application.setPresentationOptions(X11World::LOCKED);
    EXPECT_TRUE(this->subject.becomes(true));

    this->application.setPresentationOptions(platform::PRESENTATION_DEFAULT);
    EXPECT_TRUE(this->subject.becomes(false));
}

TYPED_TEST(ApplicationContract, OptionsThatLeaveSwitchingAloneHoldNothing)
{
    this->application.setPresentationOptions(
        platform::PRESENTATION_AUTO_HIDE_DOCK | platform::PRESENTATION_AUTO_HIDE_MENU_BAR
    );
    EXPECT_TRUE(this->subject.endsItsTurn());
    EXPECT_FALSE(this->subject.isHeld());
}

TYPED_TEST(ApplicationContract, AnExchangeWithinOneTurnKeepsHolding)
{
    this->application.setPresentationOptions(X11World::LOCKED);
    ASSERT_TRUE(this->subject.becomes(true));

    this->application.setPresentationOptions(platform::PRESENTATION_DEFAULT);
    this->application.setPresentationOptions(X11World::LOCKED);
    EXPECT_TRUE(this->subject.endsItsTurn());
    EXPECT_TRUE(this->subject.isHeld());
}

TYPED_TEST(ApplicationContract, TheSameOptionsTwiceAreTakenBackOnce)
{
    this->application.setPresentationOptions(X11World::LOCKED);
    this->application.setPresentationOptions(X11World::LOCKED);
    ASSERT_TRUE(this->subject.becomes(true));

    this->application.setPresentationOptions(platform::PRESENTATION_DEFAULT);
    EXPECT_TRUE(this->subject.becomes(false));
}
