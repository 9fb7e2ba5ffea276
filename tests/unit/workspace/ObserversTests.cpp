#include "linux/workspace/Observers.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using platform::WorkspaceNotificationName;
using testing::ElementsAre;

platform::WorkspaceNotification notification(WorkspaceNotificationName name)
{
    return {name, std::nullopt};
}

class Observers : public testing::Test
{
protected:
    platform::WorkspaceNotificationHandler note(const std::string& text)
    {
        return [this, text](const auto&) { heard.push_back(text); };
    }

    workspace::Observers observers;
    std::vector<std::string> heard;
    int me = 0;
    int other = 0;
};

} // namespace

TEST_F(Observers, EachHearsItsOwnNotificationsInOrderOfRegistration)
{
    observers.add(&me, WorkspaceNotificationName::WillLaunchApplication, note("first"));
    observers.add(&me, WorkspaceNotificationName::DidLaunchApplication, note("never"));
    observers.add(&other, WorkspaceNotificationName::WillLaunchApplication, note("second"));

    observers.notify(notification(WorkspaceNotificationName::WillLaunchApplication));

    EXPECT_THAT(heard, ElementsAre("first", "second"));
}

TEST_F(Observers, RegisteringTwiceIsHeardTwiceAndRemovingTakesBoth)
{
    observers.add(&me, WorkspaceNotificationName::WillLaunchApplication, note("a"));
    observers.add(&me, WorkspaceNotificationName::WillLaunchApplication, note("b"));
    observers.notify(notification(WorkspaceNotificationName::WillLaunchApplication));
    observers.remove(&me, WorkspaceNotificationName::WillLaunchApplication);
    observers.notify(notification(WorkspaceNotificationName::WillLaunchApplication));

    EXPECT_THAT(heard, ElementsAre("a", "b"));
}

TEST_F(Observers, ObserverRemovedByAnEarlierOneIsNotCalled)
{
    observers.add(&me, WorkspaceNotificationName::WillLaunchApplication, [this](const auto&) {
        heard.emplace_back("first");
        observers.remove(&other);
    });
    observers.add(&other, WorkspaceNotificationName::WillLaunchApplication, note("gone"));

    observers.notify(notification(WorkspaceNotificationName::WillLaunchApplication));

    EXPECT_THAT(heard, ElementsAre("first"));
}

TEST_F(Observers, ObserverThatJustCameHearsTheNextEventOnly)
{
    observers.add(&me, WorkspaceNotificationName::WillLaunchApplication, [this](const auto&) {
        observers.add(&other, WorkspaceNotificationName::WillLaunchApplication, note("late"));
    });

    observers.notify(notification(WorkspaceNotificationName::WillLaunchApplication));
    EXPECT_TRUE(heard.empty());
    observers.notify(notification(WorkspaceNotificationName::WillLaunchApplication));
    EXPECT_THAT(heard, ElementsAre("late"));
}

TEST_F(Observers, KeyPathObserversHearWhatTheirOptionsAskFor)
{
    const auto noteChange = [this](const std::string& who) {
        return
            [this, who](const std::string&, const std::optional<platform::KeyValueChange>& change) {
                heard.push_back(who + (change->newKey.has_value() ? " new" : " old"));
            };
    };
    observers.addKeyPath(&me, "runningApplications", 3, noteChange("both"));
    observers.addKeyPath(&me, "runningApplications", 1, noteChange("new only"));
    observers.addKeyPath(&me, "somethingElse", 3, noteChange("never"));

    observers.notifyInserted({});
    observers.notifyRemoved({});

    EXPECT_THAT(heard, ElementsAre("both new", "new only new", "both old"));
}

TEST_F(Observers, RemovingAKeyPathTakesTheLatestRegistrationOnly)
{
    const auto noteChange = [this](const std::string& who) {
        return [this, who](const auto&, const auto&) { heard.push_back(who); };
    };
    observers.addKeyPath(&me, "runningApplications", 3, noteChange("earlier"));
    observers.addKeyPath(&me, "runningApplications", 3, noteChange("later"));
    observers.removeKeyPath(&me, "runningApplications");

    observers.notifyInserted({});

    EXPECT_THAT(heard, ElementsAre("earlier"));
}
