// What one of the sources promises beyond the others, and what fails.
#include "ProcessEventsTest.h"
#include "desktop/ChildProcess.h"
#include "processes/DescriptorLimit.h"

#include <algorithm>
#include <array>
#include <filesystem>

#include <sys/socket.h>
#include <unistd.h>

namespace {

using Source = proc::ProcessEvents::Source;

int lowestFreeDescriptor()
{
    const int descriptor = ::dup(STDERR_FILENO);
    ::close(descriptor);
    return descriptor;
}

/// Executions that are heard of by the watch alone.
class ExecutablesTest : public testing::Test
{
protected:
    ExecutablesTest()
    {
        events.onExec = [this](const proc::ProcessFacts& facts) {
            if (facts.executable == program) {
                execs.add(facts.pid);
            }
        };
        events.onSnapshot = [this](const auto&) { ready.add(true); };
        events.watchExecutables({program});
    }

    static proc::ProcessEventsOptions options()
    {
        proc::ProcessEventsOptions options = optionsFor(Source::Executables);
        // Without the scan every report is owed to the watch.
        options.slowScanInterval = std::chrono::hours(1);
        return options;
    }

    void start()
    {
        events.start();
        ASSERT_TRUE(ready.waitForOne([](bool) { return true; }));
    }

    /// The folder's watch answers on the same thread as an exec's, so a second one is certain.
    bool isHeardOf()
    {
        bool seen = false;
        for (int attempt = 0; attempt < 100 && !seen; ++attempt) {
            desktop::ChildProcess child({program, "0.1"});
            const pid_t pid = child.id();
            child.waitForEnd(std::chrono::seconds(10));
            const std::vector<pid_t> all = execs.all();
            seen = std::find(all.begin(), all.end(), pid) != all.end();
        }
        return seen;
    }

    desktop::TemporaryFolder folder;
    std::string program = folder.copyProgram("/bin/sleep", "sub/deep/program");
    processes::Recorder<pid_t> execs;
    processes::Recorder<bool> ready;
    proc::ProcessEvents events{[](std::string_view) {}, options()};
};

class ConnectorTest : public ProcessEventsContract
{
};

} // namespace

TEST_P(ConnectorTest, ProgramOfAFewMillisecondsIsReported)
{
    if (!start()) {
        GTEST_SKIP() << "this kernel refuses the process connector";
    }

    for (int run = 0; run < 20; ++run) {
        desktop::ChildProcess child({program, "0.05"});
        const pid_t pid = child.id();
        child.waitForEnd(std::chrono::seconds(10));
        EXPECT_TRUE(waitForExec(pid));
    }
}

TEST_P(ConnectorTest, ProgramsThatAreGoneBeforeTheirFilesAreReadDoNotStopTheOthers)
{
    const std::string quick = folder.copyProgram("/bin/true", "quick");
    if (!start()) {
        GTEST_SKIP() << "this kernel refuses the process connector";
    }

    for (int run = 0; run < 200; ++run) {
        desktop::ChildProcess({quick}).waitForEnd(std::chrono::seconds(10));
    }
    const desktop::ChildProcess last({program, "60"});

    EXPECT_TRUE(waitForExec(last.id()));
}

INSTANTIATE_TEST_SUITE_P(Sources, ConnectorTest, testing::Values(Source::Connector), nameOf);

TEST(ProcessEvents, SourceThatNeverAnswersIsGivenUp)
{
    proc::ProcessEventsOptions options;
    std::array<int, 2> ends{};
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0, ends.data()), 0);
    options.connector.open = [&] { return ends[0]; };
    options.connector.patience = std::chrono::milliseconds(20);
    processes::Recorder<std::string> lines;
    proc::ProcessEvents events(
        [&](std::string_view line) { lines.add(std::string(line)); }, options
    );

    events.start();

    EXPECT_TRUE(lines.waitForOne([](const std::string& line) {
        return line.find("no answer") != std::string::npos;
    }));
    EXPECT_NE(events.source(), proc::ProcessEvents::Source::Connector);
    ::close(ends[1]);
}

TEST(ProcessEvents, WantOfDescriptorsIsSaidOnce)
{
    processes::Recorder<std::string> lines;
    processes::Recorder<pid_t> execs;
    processes::Recorder<bool> ready;
    proc::ProcessEvents events(
        [&](std::string_view line) { lines.add(std::string(line)); }, optionsFor(Source::Scan)
    );
    events.onExec = [&](const proc::ProcessFacts& facts) { execs.add(facts.pid); };
    events.onSnapshot = [&](const auto&) { ready.add(true); };
    events.start();
    ASSERT_TRUE(ready.waitForOne([](bool) { return true; }));
    const desktop::ChildProcess child({"/bin/sleep", "60"});
    const auto isWarning = [](const std::string& line) {
        return line.find("no file descriptors left") != std::string::npos;
    };
    {
        // The names in /proc can still be read, and nothing more.
        const processes::DescriptorLimit few(static_cast<rlim_t>(lowestFreeDescriptor()) + 1);
        EXPECT_TRUE(lines.waitForOne(isWarning));
    }
    EXPECT_TRUE(execs.waitForOne([&](pid_t pid) { return pid == child.id(); }));
    const std::vector<std::string> all = lines.all();
    EXPECT_EQ(std::count_if(all.begin(), all.end(), isWarning), 1);
}

TEST_F(ExecutablesTest, ReplacedExecutableIsStillWatched)
{
    start();

    std::filesystem::rename(folder.copyProgram("/bin/sleep", "sub/deep/program.new"), program);

    EXPECT_TRUE(isHeardOf());
}

TEST_F(ExecutablesTest, ExecutableWhoseFolderIsMadeAgainIsStillWatched)
{
    start();

    std::filesystem::remove_all(folder.path("sub"));
    folder.copyProgram("/bin/sleep", "sub/deep/program");

    EXPECT_TRUE(isHeardOf());
}

TEST_F(ExecutablesTest, ExecutableWhoseFolderIsExchangedIsStillWatched)
{
    start();

    folder.copyProgram("/bin/sleep", "new/program");
    std::filesystem::rename(folder.path("sub/deep"), folder.path("sub/old"));
    std::filesystem::rename(folder.path("new"), folder.path("sub/deep"));

    EXPECT_TRUE(isHeardOf());
}
