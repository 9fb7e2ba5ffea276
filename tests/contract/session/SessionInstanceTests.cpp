// Which of several starts runs, and what becomes of the others.
#include "SessionInstanceTest.h"
#include "linux/session/SessionDirectory.h"
#include "linux/session/SessionInstance.h"
#include "linux/session/SessionMessage.h"

#include <csignal>

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using processes::Dialogue;

constexpr uid_t NOBODY = 65534;
constexpr int ANSWER_MILLISECONDS = 20000;

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
    session::waitUntilReadable(socket, ANSWER_MILLISECONDS);
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

/// Opens every door to the socket, as if by mistake, or closes them again.
void setModes(const std::vector<std::filesystem::path>& paths, mode_t mode)
{
    for (const auto& path : paths) {
        EXPECT_EQ(::chmod(path.c_str(), mode), 0);
    }
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
    const std::vector<std::filesystem::path> doors{runtime.path(), folder(), socketPath()};
    setModes(doors, 0777);

    EXPECT_EQ(resultOfConnecting(NOBODY, socketPath()), 0)
        << "2: not another user, 3: not connected, 1: was answered";

    setModes(doors, 0700);
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
