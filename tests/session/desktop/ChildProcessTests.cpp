#include "desktop/ChildProcess.h"
#include "desktop/Failure.h"
#include "desktop/TemporaryFolder.h"

#include <csignal>
#include <string>

#include <gtest/gtest.h>
#include <sys/wait.h>

using namespace std::chrono_literals;

namespace {

const desktop::Environment PLAIN = {{"PATH", "/usr/bin:/bin"}};

} // namespace

TEST(ChildProcess, GivesInputCollectsOutputAndReportsTheExitStatus)
{
    const desktop::TemporaryFolder folder;
    desktop::ChildProcess child(
        {.arguments = {"sh", "-c", "cat; echo wrong >&2; exit 7"},
         .environment = PLAIN,
         .output = folder.path() / "out",
         .error = folder.path() / "err",
         .input = "hello"}
    );

    EXPECT_EQ(child.waitForExitStatus(10s), 7);
    EXPECT_EQ(desktop::readFile(folder.path() / "out"), "hello");
    EXPECT_EQ(desktop::readFile(folder.path() / "err"), "wrong\n");
}

TEST(ChildProcess, HasExactlyTheEnvironmentItWasGiven)
{
    const desktop::TemporaryFolder folder;
    desktop::ChildProcess child(
        {.arguments = {"env"}, .environment = {{"ONE", "1"}}, .output = folder.path() / "out"}
    );

    EXPECT_EQ(child.waitForExitStatus(10s), 0);
    EXPECT_EQ(desktop::readFile(folder.path() / "out"), "ONE=1\n");
}

TEST(ChildProcess, ThrowsForAProgramThatIsNotThere)
{
    EXPECT_THROW(
        desktop::ChildProcess({.arguments = {"/nowhere/at all"}, .environment = PLAIN}),
        desktop::Failure
    );
}

TEST(ChildProcess, ReportsTheSignalThatEndedIt)
{
    desktop::ChildProcess child({.arguments = {"sleep", "60"}, .environment = PLAIN});
    EXPECT_TRUE(child.isRunning());

    child.signal(SIGKILL);

    const auto status = child.waitForEnd(10s);
    ASSERT_TRUE(status.has_value());
    EXPECT_TRUE(WIFSIGNALED(*status));
    EXPECT_EQ(WTERMSIG(*status), SIGKILL);
    EXPECT_EQ(child.waitForExitStatus(0s), std::nullopt);
}

TEST(ChildProcess, EndsWithItsObject)
{
    pid_t process = 0;
    {
        const desktop::ChildProcess child({.arguments = {"sleep", "60"}, .environment = PLAIN});
        process = child.id();
        ASSERT_EQ(kill(process, 0), 0);
    }
    EXPECT_NE(kill(process, 0), 0);
}

TEST(ChildProcess, OneThatIsStoppedEndsWithItsObjectBeforeItIsKilled)
{
    desktop::ChildProcess child({"sh", "-c", "kill -STOP $$"});
    int status = 0;
    ASSERT_EQ(waitpid(child.id(), &status, WUNTRACED), child.id());
    ASSERT_TRUE(WIFSTOPPED(status));
    const auto before = std::chrono::steady_clock::now();

    child = desktop::ChildProcess({"true"});

    EXPECT_LT(std::chrono::steady_clock::now() - before, 2s);
}

TEST(ChildProcess, EndAfterTheEndTouchesNoOtherProcess)
{
    desktop::ChildProcess child({"true"});
    desktop::ChildProcess neighbour({"sleep", "60"});
    ASSERT_EQ(child.waitForExitStatus(10s), 0);

    child.end();

    EXPECT_TRUE(neighbour.isRunning());
}
