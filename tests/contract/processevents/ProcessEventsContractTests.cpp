// The same promises for each of the three sources.
#include "ProcessEventsTest.h"
#include "desktop/ChildProcess.h"
#include "desktop/Wait.h"

#include <algorithm>
#include <memory>

#include <unistd.h>

using Source = proc::ProcessEvents::Source;

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
               facts.parent == ::getpid() && facts.startTime > 0;
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
