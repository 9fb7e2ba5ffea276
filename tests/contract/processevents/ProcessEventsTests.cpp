// The same promises for each of the three sources, each forced by refusing the better ones.
#include "desktop/ChildProcess.h"
#include "desktop/TemporaryFolder.h"
#include "desktop/Wait.h"
#include "linux/proc/ProcessEvents.h"
#include "processes/DescriptorLimit.h"
#include "processes/Recorder.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>

#include <gtest/gtest.h>
#include <sys/socket.h>

namespace {

using Source = proc::ProcessEvents::Source;

int lowestFreeDescriptor()
{
    const int descriptor = ::dup(STDERR_FILENO);
    ::close(descriptor);
    return descriptor;
}

int refused()
{
    errno = EPERM;
    return -1;
}

proc::ProcessEventsOptions optionsFor(Source source)
{
    proc::ProcessEventsOptions options;
    if (source != Source::Connector) {
        options.connector.open = refused;
    }
    if (source == Source::Scan) {
        options.openExecutableWatch = refused;
    }
    return options;
}

std::string nameOf(const testing::TestParamInfo<Source>& info)
{
    switch (info.param) {
    case Source::Connector:
        return "Connector";
    case Source::Executables:
        return "Executables";
    default:
        return "Scan";
    }
}

class ProcessEventsContract : public testing::TestWithParam<Source>
{
protected:
    ProcessEventsContract()
    {
        events.onExec = [this](const proc::ProcessFacts& facts) { execs.add(facts); };
        events.onExit = [this](pid_t pid, std::uint64_t) { exits.add(pid); };
        events.onSnapshot = [this](const std::vector<proc::ProcessFacts>& all) {
            snapshots.add(all);
        };
    }

    /// False where this kernel does not allow the source.
    bool start()
    {
        events.watchExecutables({program});
        events.start();
        EXPECT_TRUE(snapshots.waitForOne([](const auto&) { return true; }));
        if (GetParam() == Source::Connector && events.source() != Source::Connector) {
            return false;
        }
        EXPECT_EQ(events.source(), GetParam());
        return true;
    }

    bool waitForExec(pid_t pid)
    {
        return execs.waitForOne([pid](const proc::ProcessFacts& facts) { return facts.pid == pid; }
        );
    }

    desktop::TemporaryFolder folder;
    std::string program = folder.copyProgram("/bin/sleep", "program");
    processes::Recorder<std::string> lines;
    processes::Recorder<proc::ProcessFacts> execs;
    processes::Recorder<pid_t> exits;
    processes::Recorder<std::vector<proc::ProcessFacts>> snapshots;
    proc::ProcessEvents events{
        [this](std::string_view line) { lines.add(std::string(line)); }, optionsFor(GetParam())};
};

} // namespace

TEST_P(ProcessEventsContract, OneLineSaysWhichSourceIsUsed)
{
    if (!start()) {
        GTEST_SKIP() << "this kernel refuses the process connector";
    }

    ASSERT_EQ(lines.all().size(), 1U);
    EXPECT_TRUE(lines.all().front().starts_with("Process events: ")) << lines.all().front();
}

TEST_P(ProcessEventsContract, ExecComesWithTheFacts)
{
    if (!start()) {
        GTEST_SKIP() << "this kernel refuses the process connector";
    }
    const desktop::ChildProcess child({program, "60"});

    ASSERT_TRUE(execs.waitForOne([&](const proc::ProcessFacts& facts) {
        return facts.pid == child.id() && facts.executable == program &&
               facts.arguments == std::vector<std::string>{program, "60"} &&
               facts.parent == ::getpid() && facts.user == ::getuid() && facts.startTime > 0;
    }));
}

TEST_P(ProcessEventsContract, ScriptShowsAsItsInterpreterWithTheScriptAsArgument)
{
    const std::string script = folder.writeProgram("script", "#!/bin/sh\nkill -STOP $$\n");
    if (!start()) {
        GTEST_SKIP() << "this kernel refuses the process connector";
    }
    const desktop::ChildProcess child({script});

    ASSERT_TRUE(execs.waitForOne([&](const proc::ProcessFacts& facts) {
        return facts.pid == child.id() && facts.arguments.size() == 2 &&
               facts.arguments[1] == script;
    }));
}

TEST_P(ProcessEventsContract, ProgramThatReplacesAnotherInItsProcessIsReported)
{
    if (!start()) {
        GTEST_SKIP() << "this kernel refuses the process connector";
    }
    const desktop::ChildProcess child({"/bin/sh", "-c", "exec \"$0\" 60", program});

    EXPECT_TRUE(execs.waitForOne([&](const proc::ProcessFacts& facts) {
        return facts.pid == child.id() && facts.executable == program;
    }));
}

TEST_P(ProcessEventsContract, TenStartsAtOnceAreAllReported)
{
    if (!start()) {
        GTEST_SKIP() << "this kernel refuses the process connector";
    }
    std::vector<desktop::ChildProcess> children;
    children.reserve(10);
    for (int count = 0; count < 10; ++count) {
        children.emplace_back(std::vector<std::string>{program, "60"});
    }

    for (const desktop::ChildProcess& child : children) {
        EXPECT_TRUE(waitForExec(child.id()));
    }
}

TEST_P(ProcessEventsContract, SnapshotHoldsWhatRunsAlready)
{
    const desktop::ChildProcess child({program, "60"});
    // Its arguments appear a moment after the start.
    ASSERT_TRUE(desktop::waitUntil(
        [&] { return proc::ProcFilesystem().facts(child.id()).has_value(); },
        std::chrono::seconds(10)
    ));
    if (!start()) {
        GTEST_SKIP() << "this kernel refuses the process connector";
    }

    const auto all = snapshots.all().front();
    EXPECT_TRUE(std::any_of(all.begin(), all.end(), [&](const proc::ProcessFacts& facts) {
        return facts.pid == child.id();
    }));
}

TEST_P(ProcessEventsContract, EndOfAWatchedProcessIsReported)
{
    if (!start()) {
        GTEST_SKIP() << "this kernel refuses the process connector";
    }
    desktop::ChildProcess child({program, "60"});
    const pid_t pid = child.id();
    const auto status = proc::ProcFilesystem().status(pid);
    ASSERT_TRUE(status.has_value());
    events.watchExit(pid, status->startTime);

    child.end();

    EXPECT_TRUE(exits.waitForOne([pid](pid_t ended) { return ended == pid; }));
}

TEST_P(ProcessEventsContract, DestructionInTheMiddleOfAStormIsClean)
{
    auto storm =
        std::make_unique<proc::ProcessEvents>([](std::string_view) {}, optionsFor(GetParam()));
    processes::Recorder<pid_t> seen;
    storm->onExec = [&](const proc::ProcessFacts& facts) { seen.add(facts.pid); };
    storm->watchExecutables({program});
    storm->start();
    const desktop::ChildProcess child(
        {"/bin/sh", "-c", "for i in $(seq 300); do \"$0\" 0.01; done", program}
    );
    ASSERT_TRUE(seen.waitForOne([](pid_t) { return true; }));

    storm.reset();
}

INSTANTIATE_TEST_SUITE_P(
    Sources,
    ProcessEventsContract,
    testing::Values(Source::Connector, Source::Executables, Source::Scan),
    nameOf
);

namespace {

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

TEST(ProcessEvents, ReplacedExecutableIsStillWatched)
{
    const desktop::TemporaryFolder folder;
    const std::string program = folder.copyProgram("/bin/sleep", "program");
    proc::ProcessEventsOptions options = optionsFor(Source::Executables);
    // Without the scan every report is owed to the watch.
    options.slowScanInterval = std::chrono::hours(1);
    processes::Recorder<pid_t> execs;
    processes::Recorder<bool> ready;
    proc::ProcessEvents events([](std::string_view) {}, options);
    events.onExec = [&](const proc::ProcessFacts& facts) {
        if (facts.executable == program) {
            execs.add(facts.pid);
        }
    };
    events.onSnapshot = [&](const auto&) { ready.add(true); };
    events.watchExecutables({program});
    events.start();
    ASSERT_TRUE(ready.waitForOne([](bool) { return true; }));

    std::filesystem::rename(folder.copyProgram("/bin/sleep", "program.new"), program);
    // The folder's watch answers on the same thread as this exec's, so a second one is certain.
    bool seen = false;
    for (int attempt = 0; attempt < 100 && !seen; ++attempt) {
        desktop::ChildProcess child({program, "0.1"});
        const pid_t pid = child.id();
        child.waitForEnd(std::chrono::seconds(10));
        const std::vector<pid_t> all = execs.all();
        seen = std::find(all.begin(), all.end(), pid) != all.end();
    }
    EXPECT_TRUE(seen);
}
