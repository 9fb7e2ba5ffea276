// What is handed to the desktop's notification service.
#include "desktop/Desktop.h"
#include "desktop/FakeNotifications.h"
#include "desktop/PrivateBus.h"
#include "desktop/TemporaryFolder.h"
#include "fakes/FakeLog.h"
#include "fakes/FakeUserNotifications.h"
#include "linux/dbus/DBusUserNotifications.h"
#include "qt/QtEnvironment.h"
#include "qt/WaitFor.h"

#include <chrono>
#include <csignal>
#include <memory>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

const testing::Environment* const APPLICATION =
    testing::AddGlobalTestEnvironment(new support::QtEnvironment<QCoreApplication>);

constexpr auto NOT_SHOWN = "The notification \"Hello\" is not shown: ";

/// Notifications that somebody shows.
struct InMemory
{
    fakes::FakeUserNotifications notifications;

    std::vector<std::pair<std::string, std::string>> shown(std::size_t /*number*/) const
    {
        std::vector<std::pair<std::string, std::string>> texts;
        for (const auto& notification : notifications.delivered) {
            texts.emplace_back(notification.title, notification.informativeText);
        }
        return texts;
    }
};

struct OverTheBus
{
    desktop::TemporaryFolder folder;
    desktop::PrivateBus bus{folder.path(), desktop::privateEnvironment(folder)};
    std::unique_ptr<desktop::FakeNotifications> service =
        std::make_unique<desktop::FakeNotifications>(bus.address());
    fakes::FakeLog log;
    dbus::DBusUserNotifications notifications{bus.address(), log};

    bool hasShown(std::size_t number) const
    {
        return support::waitFor([&] { return service->hasShown(number); });
    }

    std::vector<std::pair<std::string, std::string>> shown(std::size_t number) const
    {
        hasShown(number);
        std::vector<std::pair<std::string, std::string>> texts;
        for (const auto& notification : service->notifications()) {
            texts.emplace_back(notification.title, notification.text);
        }
        return texts;
    }
};

template <typename Subject> class UserNotificationsContract : public testing::Test
{
protected:
    Subject subject;
};

using Subjects = testing::Types<InMemory, OverTheBus>;
TYPED_TEST_SUITE(UserNotificationsContract, Subjects);

class UserNotificationsOverTheBus : public testing::Test
{
protected:
    OverTheBus world;
};

} // namespace

TYPED_TEST(UserNotificationsContract, NotificationsAreShownInOrderAsTheyWereGiven)
{
    this->subject.notifications.deliver({"Hello", "1 < 2 & <b>plain</b>", false, true});
    this->subject.notifications.deliver({"Again", "", false, false});
    EXPECT_THAT(
        this->subject.shown(2),
        ElementsAre(testing::Pair("Hello", "1 < 2 & <b>plain</b>"), testing::Pair("Again", ""))
    );
}

TEST_F(UserNotificationsOverTheBus, NotificationNamesTheProgramAndHasNoButtons)
{
    world.notifications.deliver({"Hello", "text", true, true});
    ASSERT_TRUE(world.hasShown(1));
    const auto& shown = world.service->notifications().front();
    EXPECT_EQ(shown.program, "Tarvel");
    EXPECT_EQ(shown.icon, "com.quorvent.Tarvel");
    EXPECT_EQ(shown.actions, 0U);
    EXPECT_EQ(shown.hints.at("desktop-entry"), "com.quorvent.Tarvel");
}

TEST_F(UserNotificationsOverTheBus, SoundIsTheUsualOneOrNone)
{
    world.notifications.deliver({"Hello", "text", false, true});
    world.notifications.deliver({"Quiet", "text", false, false});
    ASSERT_TRUE(world.hasShown(2));
    const auto& shown = world.service->notifications();
    EXPECT_EQ(shown[0].hints.at("sound-name"), "message-new-instant");
    EXPECT_EQ(shown[0].hints.count("suppress-sound"), 0U);
    EXPECT_EQ(shown[1].hints.count("sound-name"), 0U);
    EXPECT_EQ(shown[1].hints.at("suppress-sound"), "true");
}

TEST_F(UserNotificationsOverTheBus, TextStaysPlainForAServiceThatReadsMarkup)
{
    world.service->readsMarkup = true;
    world.notifications.deliver({"A & B", "1 < 2 & <b>plain</b>", false, false});
    ASSERT_TRUE(world.hasShown(1));
    const auto& shown = world.service->notifications().front();
    EXPECT_EQ(shown.title, "A & B"); // titles have no markup
    EXPECT_EQ(shown.text, "1 &lt; 2 &amp; &lt;b&gt;plain&lt;/b&gt;");
}

TEST_F(UserNotificationsOverTheBus, ABusThatDoesNotAnswerYetIsNotWaitedForAndTakesThemLater)
{
    world.bus.process().signal(SIGSTOP);
    const auto before = std::chrono::steady_clock::now();
    world.notifications.deliver({"Hello", "text", false, true});
    EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(1));
    EXPECT_THAT(world.log.diagnostics, IsEmpty());

    world.bus.process().signal(SIGCONT);
    EXPECT_THAT(world.shown(1), ElementsAre(testing::Pair("Hello", "text")));
}

TEST_F(UserNotificationsOverTheBus, WithoutAServiceOneLineSaysSo)
{
    world.service.reset();
    world.notifications.deliver({"Hello", "text", false, true});
    ASSERT_TRUE(support::waitFor([&] { return !world.log.diagnostics.empty(); }));
    EXPECT_THAT(world.log.diagnostics, ElementsAre(StartsWith(NOT_SHOWN)));
    EXPECT_THAT(world.log.lines, IsEmpty());
}

TEST_F(UserNotificationsOverTheBus, WhenTheServiceRefusesOneLineSaysWhy)
{
    world.service->refuses = true;
    world.notifications.deliver({"Hello", "text", false, true});
    ASSERT_TRUE(support::waitFor([&] {
        world.service->hasShown(1);
        return !world.log.diagnostics.empty();
    }));
    EXPECT_THAT(world.log.diagnostics, ElementsAre(std::string(NOT_SHOWN) + "too many"));
}

TEST_F(UserNotificationsOverTheBus, AServiceThatHangsIsNotWaitedFor)
{
    const auto before = std::chrono::steady_clock::now();
    world.notifications.deliver({"Hello", "text", false, true}); // nobody turns the service
    EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(2));
    EXPECT_TRUE(world.hasShown(1));
}

TEST(DBusUserNotifications, WithoutABusOneLineSaysSo)
{
    fakes::FakeLog log;
    dbus::DBusUserNotifications notifications("unix:path=/nonexistent/bus", log);
    notifications.deliver({"Hello", "text", false, true});
    EXPECT_THAT(log.diagnostics, ElementsAre(std::string(NOT_SHOWN) + "there is no session bus"));
}
