// What every exchange of notices promises: the one in memory that the logic is tested with, and the
// session bus between two processes.
#include "desktop/ChildProcess.h"
#include "desktop/Desktop.h"
#include "desktop/PrivateBus.h"
#include "desktop/TemporaryFolder.h"
#include "fakes/FakeDistributedNotifications.h"
#include "fakes/FakeLog.h"
#include "linux/dbus/DBusDistributedNotifications.h"
#include "processes/NoThreads.h"
#include "qt/QtEnvironment.h"
#include "qt/WaitFor.h"

#include <chrono>
#include <csignal>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const testing::Environment* const APPLICATION =
    testing::AddGlobalTestEnvironment(new support::QtEnvironment<QCoreApplication>);

struct InMemory
{
    fakes::Calls calls;
    fakes::FakeDistributedNotifications here{calls};

    void postFromElsewhere(const std::string& name, const std::string& object)
    {
        here.post(name, object);
    }
};

/// A bus of the test's own.
class PrivateSession
{
public:
    PrivateSession() { environment["DBUS_SESSION_BUS_ADDRESS"] = bus.address(); }

    desktop::TemporaryFolder folder;
    desktop::Environment environment = desktop::privateEnvironment(folder);
    desktop::PrivateBus bus{folder.path(), environment};
};

struct OverTheBus
{
    PrivateSession session;
    fakes::FakeLog log;
    dbus::DBusDistributedNotifications here{session.bus.address(), log};

    void postFromElsewhere(const std::string& name, const std::string& object)
    {
        desktop::ChildProcess poster(
            {.arguments = {NOTIFICATION_POSTER, name, object}, .environment = session.environment}
        );
        ASSERT_EQ(poster.waitForExitStatus(std::chrono::seconds(10)), 0);
    }
};

template <typename Subject> class NotificationsContract : public testing::Test
{
protected:
    void observe(const std::string& name)
    {
        subject.here.observe(name, [this](const std::string& of, const std::string& object) {
            heard.push_back(of + "/" + object);
        });
    }

    bool hears(std::size_t count)
    {
        return support::waitFor([&] { return heard.size() >= count; });
    }

    Subject subject;
    std::vector<std::string> heard;
};

using Subjects = testing::Types<InMemory, OverTheBus>;
TYPED_TEST_SUITE(NotificationsContract, Subjects);

} // namespace

TYPED_TEST(NotificationsContract, NoticeOfAnotherProcessIsHeardWithItsObject)
{
    this->observe("TERMINATE_HELPER_TARVEL");
    this->subject.postFromElsewhere("TERMINATE_HELPER_TARVEL", "com.quorvent.Tarvel");

    ASSERT_TRUE(this->hears(1));
    EXPECT_THAT(this->heard, ElementsAre("TERMINATE_HELPER_TARVEL/com.quorvent.Tarvel"));
}

TYPED_TEST(NotificationsContract, OnlyTheNoticesAskedForAreHeardInTheirOrder)
{
    this->observe("A");
    this->observe("B");
    this->subject.postFromElsewhere("C", "never");
    this->subject.postFromElsewhere("B", "first");
    this->subject.postFromElsewhere("A", "second \u00E4");

    ASSERT_TRUE(this->hears(2));
    EXPECT_THAT(this->heard, ElementsAre("B/first", "A/second \u00E4"));
}

TYPED_TEST(NotificationsContract, PosterHearsItsOwnNotice)
{
    this->observe("A");
    this->subject.here.post("A", "mine");

    ASSERT_TRUE(this->hears(1));
    EXPECT_THAT(this->heard, ElementsAre("A/mine"));
}

TYPED_TEST(NotificationsContract, AnObserverThatIsUnsetIsDropped)
{
    this->subject.here.observe("A", nullptr);
    this->observe("B");
    this->subject.here.post("A", "nobody's");
    this->subject.here.post("B", "mine");

    ASSERT_TRUE(this->hears(1));
    EXPECT_THAT(this->heard, ElementsAre("B/mine"));
}

TEST(DBusDistributedNotifications, NoticeWithoutABusIsLostAndSaid)
{
    fakes::FakeLog log;
    dbus::DBusDistributedNotifications notifications("unix:path=/nonexistent/bus", log);

    notifications.post("A", "object");

    EXPECT_THAT(log.diagnostics, ElementsAre("There is no session bus; the notice A is lost"));
    EXPECT_THAT(log.lines, IsEmpty());
}

TEST(DBusDistributedNotifications, NoticeThatThereIsNoThreadForIsLostAndSaidAndTheNextIsPosted)
{
    PrivateSession session;
    fakes::FakeLog log;
    // The bus library has its own thread since somebody used it first.
    dbus::DBusDistributedNotifications first(session.bus.address(), log);
    first.post("B", "object");
    std::optional<dbus::DBusDistributedNotifications> notifications;
    {
        const processes::NoThreads none;
        notifications.emplace(session.bus.address(), log);
        notifications->post("A", "object");
    }
    EXPECT_THAT(log.diagnostics, ElementsAre("There is no session bus; the notice A is lost"));

    std::vector<std::string> heard;
    notifications->observe("A", [&](const std::string& /*name*/, const std::string& object) {
        heard.push_back(object);
    });
    notifications->post("A", "next");
    EXPECT_TRUE(support::waitFor([&] { return !heard.empty(); }));
    EXPECT_THAT(heard, ElementsAre("next"));
}

TEST(DBusDistributedNotifications, PostingSurvivesThatThereIsNoThreadToWaitOn)
{
    PrivateSession session;
    fakes::FakeLog log;
    dbus::DBusDistributedNotifications notifications(session.bus.address(), log);
    std::vector<std::string> heard;
    notifications.observe("A", [&](const std::string& /*name*/, const std::string& object) {
        heard.push_back(object);
    });
    {
        const processes::NoThreads none;
        notifications.post("A", "object");
    }

    EXPECT_TRUE(support::waitFor([&] { return !heard.empty(); }));
    EXPECT_THAT(log.diagnostics, IsEmpty());
}

TEST(DBusDistributedNotifications, PostingSurvivesTheEndOfTheBusAndDoesNotWaitForIt)
{
    PrivateSession session;
    fakes::FakeLog log;
    dbus::DBusDistributedNotifications notifications(session.bus.address(), log);
    notifications.post("A", "heard by nobody");
    ASSERT_THAT(log.diagnostics, IsEmpty());

    session.bus.process().signal(SIGSTOP);
    const auto before = std::chrono::steady_clock::now();
    notifications.post("A", "the bus is stopped");
    EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(1));

    session.bus.process().signal(SIGKILL);
    session.bus.process().waitForEnd(std::chrono::seconds(10));
    EXPECT_TRUE(support::waitFor([&] {
        notifications.post("A", "the bus is gone");
        return !log.diagnostics.empty();
    }));
}

TEST(DBusDistributedNotifications, ABusThatDoesNotAnswerIsNotWaitedForLongAndIsHeardOnceItDoes)
{
    PrivateSession session;
    fakes::FakeLog log;
    session.bus.process().signal(SIGSTOP);
    const auto before = std::chrono::steady_clock::now();

    dbus::DBusDistributedNotifications notifications(session.bus.address(), log);
    std::vector<std::string> heard;
    notifications.observe("A", [&heard](const std::string& /*name*/, const std::string& object) {
        heard.push_back(object);
    });
    notifications.post("A", "lost");
    EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(2));
    EXPECT_THAT(log.diagnostics, ElementsAre("There is no session bus; the notice A is lost"));

    session.bus.process().signal(SIGCONT);
    EXPECT_TRUE(support::waitFor([&] {
        notifications.post("A", "taken");
        return !heard.empty();
    }));
    EXPECT_EQ(heard.front(), "taken");
}
