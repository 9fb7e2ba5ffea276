// How the agent comes, stays, goes and comes back.

#include "desktop/TemporaryFolder.h"
#include "processes/DescriptorLimit.h"
#include "session/agent/AgentTest.h"

#include <csignal>

#include <sys/wait.h>

namespace agent {

class Life : public AgentTest
{
protected:
    void SetUp() override { watch({TERMINAL}); }

    /// Asks the server to end the client that owns the cover of the second screen.
    void cutTheConnectionOfACover() const
    {
        desktop::WindowList& windows = session->desk.windows();
        const desktop::Rectangle covered = session->desk.server().screens().at(1);
        for (const xcb_window_t window : windows.viewableTopLevels()) {
            if (windows.placeOf(window) == covered) {
                xcb_kill_client(session->desk.connection().get(), window);
                session->desk.connection().sync();
                return;
            }
        }
        FAIL() << "the second screen has no cover of its own";
    }

    /// The one agent that is not `old`, once its lock is on the screens.
    bool isFollowedWithItsLock(pid_t old) const
    {
        return desktop::waitUntil(
            [&] {
                const auto agents = session->agents();
                return agents.size() == 1 && agents.front() != old && isCovered(session->desk) &&
                       showsControls(session->desk);
            },
            PATIENCE
        );
    }
};

TEST_F(Life, TheAgentMayOpenAsMuchAsTheSystemAllowsAndWhatItStartsAsMuchAsUsual)
{
    const auto isSoftLimitOf = [](pid_t process, rlim_t wanted) {
        rlimit limit{};
        return ::prlimit(process, RLIMIT_NOFILE, nullptr, &limit) == 0 && limit.rlim_cur == wanted;
    };
    const processes::DescriptorLimit usual(500);
    session.reset();
    watch({TERMINAL});
    ASSERT_TRUE(desktop::waitUntil([&] { return session->helpers().size() == 1; }, PATIENCE));

    EXPECT_TRUE(isSoftLimitOf(session->process().id(), processes::descriptorLimit().rlim_max));
    EXPECT_TRUE(isSoftLimitOf(session->helpers().front(), 500));
}

TEST_F(Life, ASecondStartHandsOverAndEndsWithZero)
{
    const pid_t first = session->process().id();
    desktop::ChildProcess second = session->desk.start({AgentSession::agentPath()});

    EXPECT_EQ(second.waitForExitStatus(PATIENCE), 0);
    EXPECT_EQ(session->agents(), std::vector<pid_t>{first});
}

TEST_F(Life, ASecondStartThatNobodyAskedForOpensNothing)
{
    desktop::ChildProcess quiet = session->desk.start({AgentSession::agentPath(), "-psn_0_2"});
    ASSERT_EQ(quiet.waitForExitStatus(PATIENCE), 0);

    desktop::ChildProcess asked = session->desk.start({AgentSession::agentPath()});
    ASSERT_EQ(asked.waitForExitStatus(PATIENCE), 0);

    ASSERT_TRUE(session->waitForLine("Focus"));
    EXPECT_EQ(session->countOf("Focus"), 1U);
}

TEST_F(Life, ASignalEndsTheAgentAsItEndsAnyProgram)
{
    session->process().signal(SIGTERM);

    const auto status = session->process().waitForEnd(PATIENCE);
    ASSERT_TRUE(status.has_value());
    EXPECT_TRUE(WIFSIGNALED(*status) && WTERMSIG(*status) == SIGTERM);
}

TEST_F(Life, EachStartIsLockedThoughTheLastOneHasJustEnded)
{
    constexpr std::size_t STARTS = 20;
    for (std::size_t start = 1; start <= STARTS; ++start) {
        Recorder xterm(session->desk); // ended, and started anew, at once
        ASSERT_TRUE(session->waitForLine("Will start: XTerm", start));
    }
    EXPECT_TRUE(session->waitForLine("Terminated: XTerm", STARTS));
    EXPECT_TRUE(desktop::waitUntil([&] { return !isCovered(session->desk); }, PATIENCE));
}

TEST_F(Life, AnAgentThatIsKilledWhileItLocksComesBackWithItsLock)
{
    const Recorder xterm(session->desk);
    ASSERT_TRUE(locks());
    const pid_t killed = session->process().id();

    session->process().signal(SIGKILL);

    EXPECT_TRUE(session->process().waitForEnd(PATIENCE).has_value());
    EXPECT_TRUE(isFollowedWithItsLock(killed));
    EXPECT_TRUE(session->waitForLine("Monitoring services started", 2));
    EXPECT_TRUE(opensWithThePassword());
}

TEST_F(Life, AnAgentWhoseCoversLoseTheirConnectionComesBackWithItsLock)
{
    const Recorder xterm(session->desk);
    ASSERT_TRUE(locks());
    const pid_t cut = session->process().id();

    cutTheConnectionOfACover();

    EXPECT_EQ(session->process().waitForExitStatus(PATIENCE), 1);
    EXPECT_TRUE(isFollowedWithItsLock(cut));
    EXPECT_TRUE(opensWithThePassword());
}

TEST_F(Life, AHelperThatIsKilledIsStartedAgain)
{
    ASSERT_TRUE(session->waitForLine("Did start: OlvoHelper"));
    const pid_t killed = session->helpers().at(0);

    kill(killed, SIGKILL);

    EXPECT_TRUE(session->waitForLine("Helper Terminated"));
    const bool isBack = desktop::waitUntil(
        [&] {
            const auto helpers = session->helpers();
            return helpers.size() == 1 && helpers.front() != killed;
        },
        PATIENCE
    );
    EXPECT_TRUE(isBack);
}

TEST_F(Life, StandardOutputCarriesTheLogLinesAlone)
{
    {
        const Recorder xterm(session->desk);
        ASSERT_TRUE(locks() && opensWithThePassword());
    }
    ASSERT_TRUE(session->waitForLine("Terminated: XTerm"));

    const std::vector<std::string> expected = {
        "Monitoring services started",
        "Will start: XTerm",
        "Did start: XTerm",
        "Terminated: XTerm",
    };
    std::vector<std::string> lines = session->lines();
    std::erase_if(lines, [](const std::string& line) {
        return line.find("OlvoHelper") != std::string::npos;
    });
    EXPECT_EQ(lines, expected);
}

} // namespace agent
