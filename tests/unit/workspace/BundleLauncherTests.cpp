#include "desktop/TemporaryFolder.h"
#include "linux/process/DescriptorLimit.h"
#include "linux/workspace/BundleLauncher.h"
#include "processes/DescriptorLimit.h"
#include "processes/NoThreads.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using Outcome = workspace::BundleLauncher::Outcome;
namespace fs = std::filesystem;

/// A bundle whose program writes what it sees into a named pipe.
class BundleLauncher : public testing::Test
{
protected:
    BundleLauncher()
    {
        if (mkfifo(pipe().c_str(), 0600) != 0) {
            throw std::runtime_error("no pipe");
        }
    }

    fs::path bundle() const { return folder.path() / "Probe.app"; }

    fs::path pipe() const { return folder.path() / "pipe"; }

    void writeProgram(const std::string& commands) const
    {
        folder.writeProgram(
            "Probe.app/Probe", "#!/bin/sh\n" + commands + " > '" + pipe().string() + "'\n"
        );
    }

    /// Waits until the program has closed the pipe.
    std::string output() const { return desktop::readFile(pipe()); }

    desktop::TemporaryFolder folder;
    workspace::BundleLauncher::Clock::time_point time{};
    std::vector<std::string> reports;
    workspace::BundleLauncher launcher{
        [this](std::string_view line) { reports.emplace_back(line); }, [this] { return time; }};
};

} // namespace

TEST_F(BundleLauncher, ProgramGetsTheEnvironmentAndTheAddition)
{
    writeProgram(R"(echo "$StartFromMaster:$HOME:$0")");

    ASSERT_EQ(launcher.launch(bundle(), {{"StartFromMaster", "1"}}), Outcome::Started);
    EXPECT_EQ(
        output(),
        std::string("1:") + std::getenv("HOME") + ":" + (bundle() / "Probe").string() + "\n"
    );
}

TEST_F(BundleLauncher, ProgramLeadsASessionOfItsOwnWithoutOurFilesAndSignalMask)
{
    const int held = fcntl(STDIN_FILENO, F_DUPFD, 77);
    ASSERT_EQ(held, 77);
    sigset_t blocked;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGUSR1);
    sigprocmask(SIG_BLOCK, &blocked, nullptr);

    writeProgram("{ cut -d' ' -f6 /proc/$$/stat; echo $$; grep SigBlk /proc/self/status; ls "
                 "/proc/$$/fd | grep -c 77; }");
    ASSERT_EQ(launcher.launch(bundle(), {}), Outcome::Started);
    sigprocmask(SIG_UNBLOCK, &blocked, nullptr);
    close(held);

    std::istringstream lines(output());
    std::string session;
    std::string process;
    std::string mask;
    std::string inherited;
    std::getline(lines, session);
    std::getline(lines, process);
    std::getline(lines, mask);
    std::getline(lines, inherited);
    EXPECT_EQ(session, process);
    EXPECT_EQ(mask, "SigBlk:\t0000000000000000");
    EXPECT_EQ(inherited, "0");
}

TEST_F(BundleLauncher, MissingProgramFailsAndIsReported)
{
    EXPECT_EQ(launcher.launch(folder.path() / "Missing.app", {}), Outcome::Failed);
    EXPECT_THAT(reports, testing::ElementsAre(testing::HasSubstr("Missing.app/Missing")));
}

TEST_F(BundleLauncher, ProgramThatIsStartedTooOftenIsLeftAloneForAMinute)
{
    const fs::path missing = folder.path() / "Missing.app";
    for (std::size_t start = 0; start < workspace::BundleLauncher::STARTS_A_MINUTE; ++start) {
        EXPECT_EQ(launcher.launch(missing, {}), Outcome::Failed);
    }
    EXPECT_EQ(launcher.launch(missing, {}), Outcome::TooOften);
    EXPECT_THAT(reports.back(), testing::HasSubstr("too often"));

    time += std::chrono::seconds(61);
    EXPECT_EQ(launcher.launch(missing, {}), Outcome::Failed);
}

TEST_F(BundleLauncher, ProgramIsStartedAllTheSameWhereThereIsNoThreadToWaitForItsEnd)
{
    writeProgram("echo started");
    {
        const processes::NoThreads none;
        EXPECT_EQ(launcher.launch(bundle(), {}), Outcome::Started);
    }

    EXPECT_EQ(output(), "started\n");
    ASSERT_EQ(reports.size(), 1U);
    EXPECT_NE(reports.front().find("no thread"), std::string::npos) << reports.front();
}

TEST_F(BundleLauncher, ProgramMayHaveAsManyDescriptorsAsUsual)
{
    writeProgram("ulimit -S -n");
    const processes::DescriptorLimit usual(200);
    process::raiseDescriptorLimit();
    ASSERT_EQ(launcher.launch(bundle(), {}), Outcome::Started);

    EXPECT_EQ(output(), "200\n");
    EXPECT_NE(processes::descriptorLimit().rlim_cur, 200U);
}
