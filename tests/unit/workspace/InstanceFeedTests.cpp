// Which processes count, and as what.
#include "WorkspaceTest.h"

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using workspace::forkOf;
using workspace::known;
using workspace::process;
using InstanceFeed = workspace::WorkspaceTest;

/// An application that is a script of the given shell.
class Script : public workspace::WorkspaceTest, public testing::WithParamInterface<std::string>
{
};

} // namespace

TEST_F(InstanceFeed, ProcessOfAnotherSessionIsLeftOut)
{
    processes.environments[10].display = ":2";
    processes.environments[20].display = ":1";
    start();
    exec(10, "mousepad");
    exec(20, "xterm");
    exec(30, "mousepad");

    EXPECT_THAT(
        heard,
        ElementsAre(
            "inserted xterm", "will launch xterm", "inserted mousepad", "will launch mousepad"
        )
    );
}

TEST_F(InstanceFeed, ProcessBelowOneOfAnotherSessionIsLeftOut)
{
    processes.environments[5].display = ":2";
    processes.ancestors[10] = {6, 5};
    processes.ancestors[20] = {6};
    start();
    exec(10, "mousepad");
    exec(20, "xterm");

    EXPECT_THAT(heard, ElementsAre("inserted xterm", "will launch xterm"));
}

TEST_F(InstanceFeed, WindowCountsWhateverSessionItsProcessNamed)
{
    processes.environments[10].display = ":2";
    start();
    exec(10, "mousepad");
    windows.show({10, "mousepad", "mousepad"});

    EXPECT_THAT(
        heard, ElementsAre("inserted mousepad", "will launch mousepad", "did launch mousepad")
    );
}

TEST_F(InstanceFeed, WindowThatComesBeforeTheExecOfItsProcessIsTheStartOfThat)
{
    start();
    exec(10, "xterm");
    heard.clear();
    processes.all.push_back(process(20, "xterm"));
    windows.show({20, "xterm", "XTerm"});
    EXPECT_THAT(heard, ElementsAre("inserted xterm", "will launch xterm", "did launch xterm"));

    heard.clear();
    processes.onExec(process(20, "xterm"));
    queues.runAll();
    EXPECT_THAT(heard, IsEmpty());
    windows.show({10, "xterm", "XTerm"});
    EXPECT_THAT(heard, ElementsAre("did launch xterm"));
    EXPECT_EQ(desktop.runningApplications("xterm").size(), 2U);
}

TEST_F(InstanceFeed, WindowOfAForkIsOfTheStartThatIsAwaited)
{
    start();
    exec(10, "mousepad");
    heard.clear();
    processes.all.push_back(forkOf(20, "mousepad"));
    windows.show({20, "mousepad", "mousepad"});

    EXPECT_THAT(heard, ElementsAre("did launch mousepad"));
}

TEST_F(InstanceFeed, ProcessOfNobodyIsNeverHeardOf)
{
    start();
    processes.exec(process(10, "nobody"));

    EXPECT_TRUE(queues.main.empty()) << "the main thread must not be woken for it";
}

TEST_F(InstanceFeed, LostEventsAreMadeUpForByTheNextSnapshot)
{
    start();
    exec(10, "mousepad");
    heard.clear();
    processes.all = {process(20, "xterm")};
    processes.onSnapshot(processes.all);
    queues.runAll();

    EXPECT_THAT(
        heard,
        ElementsAre(
            "removed mousepad", "did terminate mousepad", "inserted xterm", "will launch xterm"
        )
    );
}

TEST_F(InstanceFeed, ForkedProcessKeepsTheInstance)
{
    start();
    exec(10, "mousepad");
    heard.clear();
    processes.all.push_back(forkOf(11, "mousepad"));
    exit(10);

    EXPECT_THAT(heard, IsEmpty());
    EXPECT_EQ(desktop.runningApplications("mousepad").front().processIdentifier, 11);
}

TEST_F(InstanceFeed, ForkOfTheLivingInstanceIsNoSurvivorOfASecondStart)
{
    start();
    exec(10, "xterm");
    exec(20, "xterm");
    heard.clear();
    processes.all.push_back(forkOf(21, "xterm")); // about to execute a shell
    processes.ancestors[21] = {10, 1};
    exit(20);
    exit(21);

    EXPECT_THAT(heard, IsEmpty());
    EXPECT_EQ(desktop.runningApplications("xterm").size(), 1U);
}

TEST_F(InstanceFeed, ProcessOfAnotherSessionIsNoSurvivor)
{
    start();
    exec(10, "mousepad");
    exec(20, "mousepad"); // hands over
    processes.environments[21].display = ":2";
    processes.all.push_back(forkOf(21, "mousepad"));
    exit(20);
    heard.clear();
    exit(10);

    EXPECT_THAT(heard, ElementsAre("removed mousepad", "did terminate mousepad"));
    EXPECT_THAT(desktop.runningApplications(), IsEmpty());
}

TEST_F(InstanceFeed, WhatItsWindowsAnnouncedKeepsWhatItLeavesBehindWhateverSessionThatNames)
{
    processes.environments[10].display = ":2";
    processes.environments[11].display = ":2";
    start();
    exec(10, "mousepad");
    windows.show({10, "mousepad", "mousepad"});
    processes.all.push_back(forkOf(11, "mousepad"));
    exit(10);

    EXPECT_EQ(heard.back(), "did launch mousepad");
    EXPECT_EQ(desktop.runningApplications("mousepad").front().processIdentifier, 11);
}

TEST_F(InstanceFeed, InterpreterThatRunsSomethingElseIsNoSurvivor)
{
    auto script = std::make_shared<workspace::KnownApplication>(*known("script"));
    script->executable = "/usr/bin/python3";
    index.add(script);
    start();
    exec(10, "python3");
    proc::ProcessFacts other = process(11, "python3");
    other.arguments = {"python3", "/home/user/other.py"};
    index.hide("script");
    processes.all.push_back(other);
    exit(10);

    EXPECT_EQ(heard.back(), "did terminate script");
}

TEST_P(Script, EndsWithTheProgramThatItLeftBehind)
{
    auto script = std::make_shared<workspace::KnownApplication>(*known("script"));
    script->executable = "/usr/bin/" + GetParam();
    index.add(script);
    start();
    exec(10, GetParam());
    proc::ProcessFacts child = process(11, "real-program");
    child.parent = 10;
    processes.exec(child);
    queues.runAll();
    exit(10);
    EXPECT_EQ(heard.back(), "will launch script");
    exit(11);
    EXPECT_EQ(heard.back(), "did terminate script");
}

INSTANTIATE_TEST_SUITE_P(
    Shells,
    Script,
    testing::Values("sh", "bash", "dash", "zsh", "ksh", "mksh", "busybox"),
    [](const auto& shell) { return shell.param; }
);
