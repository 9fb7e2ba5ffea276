#include "desktop/TemporaryFolder.h"
#include "linux/proc/ProcessScan.h"

#include <gtest/gtest.h>

namespace {

// As the kernel flags processes.
constexpr auto EXECUTED = "4194560";
constexpr auto FORKED = "4194368";

class ProcessScanTest : public testing::Test
{
protected:
    ProcessScanTest()
    {
        scan.onExec = [this](const proc::ProcessFacts& facts) {
            seen.push_back(std::to_string(facts.pid) + " " + facts.executable);
        };
    }

    void setProcess(
        const std::string& pid,
        const std::string& executable,
        const std::string& startTime = "100",
        const std::string& arguments = "x",
        const std::string& flags = EXECUTED
    )
    {
        folder.write(
            pid + "/stat",
            pid + " (x) S 1 5 6 0 8 " + flags + " 10 11 12 13 14 15 16 17 18 19 20 0 " + startTime +
                " 22\n"
        );
        folder.write(pid + "/cmdline", arguments);
        std::filesystem::remove(folder.path(pid + "/exe"));
        std::filesystem::create_symlink(executable, folder.path(pid + "/exe"));
    }

    void setFork(const std::string& pid, const std::string& executable)
    {
        setProcess(pid, executable, "100", "x", FORKED);
    }

    desktop::TemporaryFolder folder;
    proc::ProcFilesystem filesystem{::getuid(), folder.path()};
    proc::ProcessScan scan{filesystem};
    std::vector<std::string> seen;
};

using Seen = std::vector<std::string>;

} // namespace

TEST_F(ProcessScanTest, WhatWasThereBeforeIsNotReported)
{
    setProcess("10", "/bin/a");

    EXPECT_EQ(scan.prime().size(), 1U);
    scan.look();

    EXPECT_TRUE(seen.empty());
}

TEST_F(ProcessScanTest, NewProcessIsReportedOnce)
{
    scan.prime();
    setProcess("10", "/bin/a");

    scan.look();
    scan.look();

    EXPECT_EQ(seen, Seen{"10 /bin/a"});
}

TEST_F(ProcessScanTest, AnotherProgramInTheSameProcessIsReported)
{
    setProcess("10", "/bin/a");
    scan.prime();

    setProcess("10", "/bin/b");
    scan.look();

    EXPECT_EQ(seen, Seen{"10 /bin/b"});
}

TEST_F(ProcessScanTest, AnotherScriptOfTheSameInterpreterIsReported)
{
    setProcess("10", "/bin/sh", "100", "sh one");
    scan.prime();

    setProcess("10", "/bin/sh", "100", "sh two");
    scan.look();

    EXPECT_EQ(seen, Seen{"10 /bin/sh"});
}

TEST_F(ProcessScanTest, NumberThatWasGivenToAnotherProcessIsReported)
{
    setProcess("10", "/bin/a", "100");
    scan.prime();

    setProcess("10", "/bin/a", "200");
    scan.look();

    EXPECT_EQ(seen, Seen{"10 /bin/a"});
}

TEST_F(ProcessScanTest, ProcessInTheMiddleOfAnExecIsReportedAfterIt)
{
    scan.prime();
    setProcess("10", "/bin/a", "100", "");
    scan.look();
    EXPECT_TRUE(seen.empty());

    setProcess("10", "/bin/a", "100", "a");
    scan.look();

    EXPECT_EQ(seen, Seen{"10 /bin/a"});
}

TEST_F(ProcessScanTest, ForkIsReportedOnceItExecutesSomething)
{
    setProcess("10", "/bin/terminal");
    scan.prime();

    setFork("11", "/bin/terminal");
    scan.look();
    scan.look();
    EXPECT_TRUE(seen.empty());

    setProcess("11", "/bin/sh", "100", "sh");
    scan.look();
    scan.look();
    EXPECT_EQ(seen, Seen{"11 /bin/sh"});
}

TEST_F(ProcessScanTest, ForkThatExecutesTheSameOnceMoreIsReported)
{
    setProcess("10", "/bin/terminal");
    scan.prime();

    setFork("11", "/bin/terminal");
    scan.look();
    setProcess("11", "/bin/terminal");
    scan.look();

    EXPECT_EQ(seen, Seen{"11 /bin/terminal"});
}

TEST_F(ProcessScanTest, ForkOfWhatWasStartedAtTheSameTimeIsNotReported)
{
    scan.prime();
    setProcess("10", "/bin/terminal");
    setFork("11", "/bin/terminal");

    scan.look();

    EXPECT_EQ(seen, Seen{"10 /bin/terminal"});
}

TEST_F(ProcessScanTest, ForkWhoseParentHasEndedIsNotReported)
{
    setProcess("10", "/bin/terminal");
    scan.prime();

    setFork("11", "/bin/terminal");
    std::filesystem::remove_all(folder.path("10"));
    scan.look();
    scan.look();

    EXPECT_TRUE(seen.empty());
}

TEST_F(ProcessScanTest, ForkOfSomethingThatWasNeverSeenStandsForIt)
{
    scan.prime();

    setFork("11", "/bin/forks-and-exits");
    scan.look();
    scan.look();

    EXPECT_EQ(seen, Seen{"11 /bin/forks-and-exits"});
}

TEST_F(ProcessScanTest, ForkThatWasThereBeforeIsReportedWhenItExecutesSomething)
{
    setFork("11", "/bin/terminal");
    scan.prime();
    scan.look();
    EXPECT_TRUE(seen.empty());

    setProcess("11", "/bin/sh", "100", "sh");
    scan.look();

    EXPECT_EQ(seen, Seen{"11 /bin/sh"});
}
