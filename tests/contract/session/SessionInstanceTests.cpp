#include "desktop/TemporaryFolder.h"
#include "linux/session/LocalSocket.h"
#include "linux/session/SessionDirectory.h"
#include "linux/session/SessionInstance.h"
#include "linux/session/SessionMessage.h"
#include "linux/session/SessionName.h"
#include "linux/session/SessionWatch.h"
#include "processes/Dialogue.h"
#include "processes/Environment.h"

#include <csignal>
#include <filesystem>
#include <memory>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>

namespace {

using processes::Dialogue;

constexpr auto NAME = "Tarvel";
constexpr uid_t NOBODY = 65534;
constexpr int PATIENCE_MILLISECONDS = 20000;

class SessionInstance : public testing::Test
{
protected:
    std::unique_ptr<Dialogue> start(const std::string& manner = "activating") const
    {
        return startIn({{"DISPLAY", ":77"}}, NAME, manner);
    }

    std::unique_ptr<Dialogue> startIn(
        desktop::Environment environment,
        const std::string& name = NAME,
        const std::string& manner = "activating"
    ) const
    {
        environment["XDG_RUNTIME_DIR"] = runtime.path();
        return std::make_unique<Dialogue>(
            std::vector<std::string>{SESSION_PEER, name, manner}, environment
        );
    }

    std::unique_ptr<Dialogue> startFirst() const
    {
        auto first = start();
        EXPECT_EQ(first->hear(), "first");
        return first;
    }

    // The status that a watcher learns when the first does as told.
    std::optional<int> statusAfter(const std::string& command) const
    {
        const auto first = startFirst();
        const auto watch = session::SessionWatch::open(NAME);
        if (watch == nullptr) {
            ADD_FAILURE() << "nobody to watch";
            return std::nullopt;
        }
        first->say(command);
        return statusAtEnd(*watch);
    }

    static std::optional<int> statusAtEnd(session::SessionWatch& watch)
    {
        pollEnd(watch);
        return watch.exitStatus();
    }

    static void pollEnd(const session::SessionWatch& watch)
    {
        const descriptors::FileDescriptor copy(::dup(watch.fd()));
        ASSERT_TRUE(session::waitUntilReadable(copy, PATIENCE_MILLISECONDS));
        EXPECT_TRUE(watch.hasEnded());
    }

    std::filesystem::path folder() const { return runtime.path() / "com.quorvent.Tarvel"; }

    std::filesystem::path socketPath() const
    {
        return folder() / session::socketName(session::sessionName(NAME));
    }

    // Opens every door to the socket, as if by mistake, or closes them again.
    void setModes(mode_t mode) const
    {
        for (const auto& path : {runtime.path(), folder(), socketPath()}) {
            EXPECT_EQ(::chmod(path.c_str(), mode), 0);
        }
    }

    const desktop::TemporaryFolder runtime;
    const processes::EnvironmentVariable runtimeVariable{"XDG_RUNTIME_DIR", runtime.path()};
    const processes::EnvironmentVariable display{"DISPLAY", ":77"};
    const processes::EnvironmentVariable wayland{"WAYLAND_DISPLAY", std::nullopt};
};

void connectAs(uid_t user, const std::string& path)
{
    if (::setuid(user) != 0) {
        ::_exit(2);
    }
    const descriptors::FileDescriptor socket = session::connectTo(path);
    if (!socket.isOpen()) {
        ::_exit(3);
    }
    session::sendMessage(socket, session::ACTIVATE);
    session::waitUntilReadable(socket, PATIENCE_MILLISECONDS);
    ::_exit(session::receiveMessage(socket) == "" ? 0 : 1);
}

int resultOfConnecting(uid_t user, const std::string& path)
{
    const pid_t other = ::fork();
    if (other == 0) {
        connectAs(user, path);
    }
    int status = -1;
    EXPECT_EQ(::waitpid(other, &status, 0), other);
    return WEXITSTATUS(status);
}

} // namespace

TEST_F(SessionInstance, SecondStartActivatesTheFirstAndEndsWithZero)
{
    const auto first = startFirst();
    const auto second = start();

    EXPECT_EQ(second->hear(), "already running");
    EXPECT_EQ(second->process().waitForEnd(processes::PATIENCE), 0);
    EXPECT_EQ(first->hear(), "activated");
}

TEST_F(SessionInstance, EverySecondStartActivatesTheFirstOnce)
{
    const auto first = startFirst();
    for (int round = 0; round < 40; ++round) {
        const auto second = start();
        EXPECT_EQ(second->hear(), "already running");
        EXPECT_EQ(first->hear(), "activated");
    }
}

TEST_F(SessionInstance, QuietSecondStartLeavesTheFirstAlone)
{
    const auto first = startFirst();
    const auto second = start("quiet");
    EXPECT_EQ(second->hear(), "already running");
    EXPECT_EQ(second->process().waitForEnd(processes::PATIENCE), 0);

    const auto third = start();
    EXPECT_EQ(third->hear(), "already running");
    EXPECT_EQ(first->hear(), "activated");
    first->say("fork");
    EXPECT_EQ(first->hear(), "forked") << "one activation only, the third's";
}

TEST_F(SessionInstance, OtherNamesAndOtherDisplaysAreOthers)
{
    const auto first = startFirst();

    EXPECT_EQ(startIn({{"DISPLAY", ":77"}}, "OlvoHelper")->hear(), "first");
    EXPECT_EQ(startIn({{"DISPLAY", ":78"}})->hear(), "first");
    EXPECT_EQ(startIn({{"DISPLAY", ":77"}, {"WAYLAND_DISPLAY", "wayland-0"}})->hear(), "first");
}

TEST_F(SessionInstance, OfTenStartsAtOnceExactlyOneIsFirst)
{
    std::vector<std::unique_ptr<Dialogue>> all;
    all.reserve(10);
    for (int i = 0; i < 10; ++i) {
        all.push_back(start());
    }

    int firsts = 0;
    for (const auto& one : all) {
        firsts += one->hear() == "first" ? 1 : 0;
    }
    EXPECT_EQ(firsts, 1);
}

TEST_F(SessionInstance, AfterACrashTheNextStartIsFirst)
{
    for (int round = 0; round < 5; ++round) {
        const auto first = startFirst();
        first->kill();
        EXPECT_TRUE(std::filesystem::exists(socketPath()));
    }
}

TEST_F(SessionInstance, AStoppedFirstKeepsItsName)
{
    const auto first = startFirst();
    first->process().signal(SIGSTOP);

    const auto second = start();
    EXPECT_THAT(second->hear().value_or(""), testing::HasSubstr("does not answer"));
    EXPECT_EQ(second->hear(), "already running");
    EXPECT_EQ(second->process().waitForEnd(processes::PATIENCE), 0);

    first->process().signal(SIGCONT);
    EXPECT_EQ(first->hear(), "activated");
}

TEST_F(SessionInstance, NobodyIsWatchedWhereNobodyRuns)
{
    EXPECT_EQ(session::SessionWatch::open(NAME), nullptr);

    startFirst()->kill();
    EXPECT_EQ(session::SessionWatch::open(NAME), nullptr);
}

TEST_F(SessionInstance, WatcherKnowsTheProcess)
{
    const auto first = startFirst();
    const auto watch = session::SessionWatch::open(NAME);

    ASSERT_NE(watch, nullptr);
    EXPECT_EQ(watch->processIdentifier(), first->process().id());
    EXPECT_FALSE(watch->hasEnded());
    EXPECT_EQ(watch->exitStatus(), std::nullopt);
}

TEST_F(SessionInstance, WatcherLearnsTheStatusOfEveryWayThroughExit)
{
    EXPECT_EQ(statusAfter("exit 0"), 0);
    EXPECT_EQ(statusAfter("exit 3"), 3);
    EXPECT_EQ(statusAfter("return 4"), 4);
    EXPECT_EQ(statusAfter("announce 0"), 0);
}

TEST_F(SessionInstance, WatcherLearnsNoStatusOfAProcessThatDidNotExit)
{
    EXPECT_EQ(statusAfter("abort"), std::nullopt);
    EXPECT_EQ(statusAfter("_exit 0"), std::nullopt);

    const auto first = startFirst();
    const auto watch = session::SessionWatch::open(NAME);
    ASSERT_NE(watch, nullptr);
    first->process().signal(SIGKILL);
    EXPECT_EQ(statusAtEnd(*watch), std::nullopt);
}

TEST_F(SessionInstance, NameIsFreeAsSoonAsTheWatcherKnowsOfTheEnd)
{
    for (int round = 0; round < 20; ++round) {
        const auto first = startFirst();
        const auto watch = session::SessionWatch::open(NAME);
        ASSERT_NE(watch, nullptr);
        first->process().signal(SIGKILL);
        pollEnd(*watch);
        EXPECT_EQ(start()->hear(), "first");
    }
}

TEST_F(SessionInstance, AForkDoesNotSpeakForTheFirst)
{
    const auto first = startFirst();
    const auto watch = session::SessionWatch::open(NAME);
    ASSERT_NE(watch, nullptr);

    first->say("fork");
    EXPECT_EQ(first->hear(), "forked");
    EXPECT_EQ(watch->exitStatus(), std::nullopt);
    first->say("exit 3");
    EXPECT_EQ(statusAtEnd(*watch), 3);
}

TEST_F(SessionInstance, AWatcherThatWasNotLetInYetLearnsTheStatusToo)
{
    const auto first = startFirst();
    first->process().signal(SIGSTOP);
    const auto watch = session::SessionWatch::open(NAME);
    ASSERT_NE(watch, nullptr);

    first->say("exit 3");
    first->process().signal(SIGCONT);
    EXPECT_EQ(statusAtEnd(*watch), 3);
}

TEST_F(SessionInstance, AWatcherThatManyOthersPushedOutLearnsTheStatusToo)
{
    const auto first = startFirst();
    const auto watch = session::SessionWatch::open(NAME);
    ASSERT_NE(watch, nullptr);
    std::vector<descriptors::FileDescriptor> idle;
    for (int i = 0; i < 31; ++i) {
        idle.push_back(session::connectTo(socketPath()));
    }
    EXPECT_EQ(start()->hear(), "already running"); // the first has let in all of them by then
    idle.push_back(session::connectTo(socketPath()));
    const auto late = session::SessionWatch::open(NAME);
    ASSERT_NE(late, nullptr);

    first->say("exit 3");
    EXPECT_EQ(statusAtEnd(*watch), 3);
    EXPECT_EQ(statusAtEnd(*late), 3);
}

TEST_F(SessionInstance, TheStatusOfTheLatestIsLeftBehindUntilTheNextTakesTheName)
{
    EXPECT_EQ(session::SessionWatch::latestExitStatus(NAME), std::nullopt);
    statusAfter("exit 3");
    EXPECT_EQ(session::SessionWatch::latestExitStatus(NAME), 3);
    statusAfter("announce 0");
    EXPECT_EQ(session::SessionWatch::latestExitStatus(NAME), 0);

    const auto next = startFirst();
    EXPECT_EQ(session::SessionWatch::latestExitStatus(NAME), std::nullopt);
    next->process().signal(SIGKILL);
    next->process().waitForEnd(processes::PATIENCE);
    EXPECT_EQ(session::SessionWatch::latestExitStatus(NAME), std::nullopt);
}

TEST_F(SessionInstance, WatchersThatNeverReadOrHaveGoneDoNotDisturbTheEnd)
{
    const auto first = startFirst();
    std::vector<std::unique_ptr<session::SessionWatch>> watches;
    watches.reserve(60);
    for (int i = 0; i < 60; ++i) {
        watches.push_back(session::SessionWatch::open(NAME));
    }
    watches.resize(20);

    first->say("exit 3");
    const std::optional<int> status = first->process().waitForEnd(processes::PATIENCE);
    ASSERT_TRUE(status.has_value());
    EXPECT_TRUE(WIFEXITED(*status));
    EXPECT_EQ(WEXITSTATUS(*status), 3);
}

TEST_F(SessionInstance, UnknownMessagesAreIgnored)
{
    const auto first = startFirst();
    const descriptors::FileDescriptor stranger = session::connectTo(socketPath());
    ASSERT_TRUE(stranger.isOpen());
    EXPECT_TRUE(session::sendMessage(stranger, std::string(60, 'x')));

    EXPECT_EQ(start()->hear(), "already running");
    EXPECT_EQ(first->hear(), "activated");
}

TEST_F(SessionInstance, OtherUsersAreShownTheDoor)
{
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only root can become another user";
    }
    const auto first = startFirst();
    setModes(0777);

    EXPECT_EQ(resultOfConnecting(NOBODY, socketPath()), 0)
        << "2: not another user, 3: not connected, 1: was answered";

    setModes(0700);
    first->say("fork");
    EXPECT_EQ(first->hear(), "forked") << "was not activated";
}

TEST_F(SessionInstance, AFirstThatNobodyCanReachStillRunsAndSaysWhy)
{
    const std::string lock = session::lockName(session::sessionName(NAME));
    std::filesystem::create_directories(folder() / lock);
    std::filesystem::permissions(folder(), std::filesystem::perms::owner_all);

    session::SessionInstance instance(NAME);
    std::string reported;
    instance.onProblem = [&reported](const std::string& problem) { reported = problem; };
    EXPECT_EQ(instance.acquire(), session::Acquired::First);
    EXPECT_NE(reported.find("cannot tell whether"), std::string::npos) << reported;
    EXPECT_EQ(instance.fd(), -1);
    instance.handle();
}
