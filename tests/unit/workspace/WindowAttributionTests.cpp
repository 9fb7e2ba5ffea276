// Whose windows are.
#include "TrackerTest.h"
#include "WorkspaceTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using workspace::known;
using workspace::process;

class WindowAttribution : public workspace::WorkspaceTest
{
protected:
    /// An application with an entry in the home folder runs as process 10, and a calculator is
    /// protected.
    void startHomemade(bool isChosen = false)
    {
        workspace::KnownApplication innocent = *known("innocent");
        innocent.homemade = true;
        innocent.chosen = isChosen;
        index.add(std::make_shared<workspace::KnownApplication>(innocent));
        workspace::KnownApplication calculator = *known("galculator");
        calculator.chosen = true;
        index.add(std::make_shared<workspace::KnownApplication>(calculator));
        start();
        exec(10, "innocent");
        heard.clear();
    }

    /// A panel runs as process 10, and was there before anybody listened.
    void startPanel()
    {
        processes.all.push_back(process(10, "xterm"));
        start();
    }

    /// Something that the panel started.
    void startFromPanel(pid_t pid, const std::string& name)
    {
        processes.all.push_back(process(pid, name));
        processes.ancestors[pid] = {10, 1};
    }
};

/// In a time of its own.
class AttributionInTime : public workspace::TrackerTest
{
protected:
    [[nodiscard]] workspace::InstancePtr instanceOf(const workspace::WindowFacts& window) const
    {
        return attribution.instanceOf(window, workspace::WindowAttribution::Seen::Now);
    }

    workspace::FakeApplicationIndex index;
    workspace::FakeProcessSource processes;
    workspace::OwnPrograms programs{workspace::MAIN_BUNDLE, index};
    workspace::WindowAttribution attribution{tracker, processes, programs};
};

} // namespace

TEST_F(WindowAttribution, WindowNeverOverridesWhatAProcessExecutes)
{
    start();
    exec(10, "xterm");
    heard.clear();
    windows.show({10, "mousepad", "mousepad"});

    EXPECT_THAT(heard, ElementsAre("did launch xterm"));
}

TEST_F(WindowAttribution, WindowTellsTheApplicationWhereOneProgramIsSeveral)
{
    startOffice();
    windows.show({10, "writer", "soffice", "", 1});
    heard.clear();
    windows.show({10, "soffice", "soffice", "", 2});
    EXPECT_THAT(heard, IsEmpty());
    windows.show({10, "calc", "soffice", "", 2});
    EXPECT_THAT(heard, ElementsAre("inserted calc", "will launch calc", "did launch calc"));
    windows.hide(2);
    EXPECT_EQ(heard.back(), "did terminate calc");
}

TEST_F(WindowAttribution, WhatAWindowRevealedIsLearned)
{
    index.copies["/usr/bin/copy-of-mousepad"] = "mousepad";
    start();
    processes.all.push_back(process(10, "copy-of-mousepad"));
    windows.show({10, "mousepad", "mousepad"});

    EXPECT_THAT(index.learned, ElementsAre("/usr/bin/copy-of-mousepad is mousepad"));
}

TEST_F(WindowAttribution, StrangerThatNamesItsWindowsStartsTheApplicationAndIsNotLearned)
{
    start();
    processes.all.push_back(process(10, "ssh"));
    windows.show({10, "mousepad", "mousepad"});

    EXPECT_THAT(
        heard, ElementsAre("inserted mousepad", "will launch mousepad", "did launch mousepad")
    );
    EXPECT_THAT(index.learned, IsEmpty());
}

TEST_F(WindowAttribution, WhatTheApplicationExecutesIsLearned)
{
    start();
    exec(10, "mousepad");
    processes.all.push_back(process(11, "real"));
    processes.all.push_back(process(12, "viewer"));
    processes.ancestors = {{11, {10, 1}}, {12, {10, 1}}};
    windows.show({11, "mousepad", "mousepad", "", 1});
    windows.show({.processIdentifier = 12, .windowClass = "mousepad", .window = 2, .remote = true});

    EXPECT_THAT(index.learned, ElementsAre("/usr/bin/real is mousepad"));
}

TEST_F(WindowAttribution, WindowThatNoExecAnnouncedStillLaunchesItsApplication)
{
    start();
    processes.all.push_back(process(10, "copy-of-mousepad"));
    windows.show({10, "mousepad", "mousepad"});
    queues.runAll();

    EXPECT_THAT(
        heard, ElementsAre("inserted mousepad", "will launch mousepad", "did launch mousepad")
    );
}

TEST_F(WindowAttribution, WindowOfAChildBelongsToItsApplication)
{
    start();
    exec(10, "xterm");
    processes.all.push_back(process(12, "nobody"));
    processes.ancestors[12] = {11, 10, 1};
    windows.show({12, "Something", "something"});

    EXPECT_EQ(heard.back(), "did launch xterm");
}

TEST_F(WindowAttribution, WindowOfACopyIsTheApplications)
{
    index.copies["/usr/bin/innocent"] = "mousepad";
    start();
    exec(10, "xterm");
    processes.all.push_back(process(11, "innocent"));
    processes.ancestors[11] = {10, 1};
    windows.show({10, "xterm", "xterm", "", 5});
    heard.clear();
    windows.show({11, "Innocent", "innocent", "", 1});

    EXPECT_THAT(
        heard, ElementsAre("inserted mousepad", "will launch mousepad", "did launch mousepad")
    );
    EXPECT_THAT(index.learned, ElementsAre("/usr/bin/innocent is mousepad"));
}

TEST_F(WindowAttribution, CopyThatAnApplicationWasStartedForIsThatApplication)
{
    index.copies["/usr/bin/boxed"] = "mousepad";
    start();
    exec(10, "xterm");
    processes.all.push_back(process(11, "boxed"));
    processes.ancestors[11] = {10, 1};
    heard.clear();
    windows.show({11, "Boxed", "boxed", "", 1});

    EXPECT_THAT(heard, ElementsAre("did launch xterm"));
}

TEST_F(WindowAttribution, WindowWithoutAProcessIsItsApplicationUntilItGoes)
{
    start();
    windows.show({0, "mousepad", "mousepad", "", 1});
    windows.show({0, "mousepad", "mousepad", "", 2});
    windows.show({0, "Nobody", "nobody", "", 3});
    EXPECT_THAT(
        heard, ElementsAre("inserted mousepad", "will launch mousepad", "did launch mousepad")
    );
    const auto running = desktop.runningApplications("mousepad");
    ASSERT_EQ(running.size(), 1U);
    EXPECT_TRUE(desktop.activate(running.front(), 2));
    EXPECT_THAT(windows.forwardWindows, ElementsAre(1));
    heard.clear();
    windows.hide(1);
    EXPECT_THAT(heard, IsEmpty());
    windows.hide(2);

    EXPECT_THAT(heard, ElementsAre("removed mousepad", "did terminate mousepad"));
}

TEST_F(WindowAttribution, WindowWithoutAProcessIsNoPartOfAnotherApplication)
{
    start();
    windows.show({0, "mousepad", "mousepad", "", 1});
    windows.show({0, "xterm", "xterm", "", 2});
    exec(10, "mousepad");

    EXPECT_EQ(desktop.runningApplications("mousepad").size(), 2U);
    EXPECT_EQ(desktop.runningApplications("xterm").size(), 1U);
}

TEST_F(WindowAttribution, CopyWithAnEntryInTheHomeFolderIsTheProtectedApplication)
{
    index.copies["/usr/bin/innocent"] = "galculator";
    startHomemade();
    windows.show({10, "innocent", "innocent", "", 1});

    EXPECT_THAT(
        heard,
        ElementsAre(
            "inserted galculator",
            "will launch galculator",
            "did launch galculator",
            "did launch innocent"
        )
    );
    heard.clear();
    windows.show({10, "innocent", "innocent", "", 2});
    EXPECT_THAT(heard, IsEmpty());
    windows.hide(1);
    EXPECT_TRUE(desktop.activate(desktop.runningApplications("galculator").front(), 2));
    EXPECT_THAT(windows.forwardWindows, ElementsAre(2)) << "it is no window of the entry's";
    exit(10);
    EXPECT_THAT(
        heard, testing::IsSupersetOf({"did terminate galculator", "did terminate innocent"})
    );
}

TEST_F(WindowAttribution, EntryInTheHomeFolderTakesNoWindowFromAProtectedApplication)
{
    startHomemade();
    windows.show({10, "galculator", "galculator", "", 1});

    EXPECT_THAT(heard, testing::Contains("will launch galculator"));
}

TEST_F(WindowAttribution, CopyThatNamesItselfLikeAnotherApplicationIsWhatItIsACopyOf)
{
    index.copies["/usr/bin/copy"] = "galculator";
    startHomemade();
    processes.all.push_back(process(11, "copy"));
    processes.all.push_back(process(12, "copy"));
    for (const auto& [pid, name] : {std::pair(11, "mousepad"), std::pair(12, "innocent")}) {
        heard.clear();
        windows.show({pid, name, name, "", static_cast<std::uint64_t>(pid)});

        EXPECT_THAT(heard, testing::Contains("did launch galculator"));
        EXPECT_THAT(heard, testing::Not(testing::Contains(std::string("will launch ") + name)));
    }
}

TEST_F(WindowAttribution, ChildOfAnApplicationOfTheHomeFolderMayBeACopy)
{
    index.copies["/usr/bin/hidden"] = "galculator";
    startHomemade();
    processes.all.push_back(process(11, "hidden"));
    processes.ancestors[11] = {10, 1};
    windows.show({11, "Hidden", "hidden", "", 1});

    EXPECT_THAT(heard, testing::Contains("will launch galculator"));
}

TEST_F(WindowAttribution, ProtectedApplicationOfTheHomeFolderKeepsItsWindows)
{
    index.copies["/usr/bin/innocent"] = "galculator";
    startHomemade(true);
    windows.show({10, "galculator", "galculator", "", 1});
    windows.show({10, "Innocent", "innocent", "", 2});

    EXPECT_THAT(heard, ElementsAre("did launch innocent"));
}

TEST_F(WindowAttribution, ApplicationOfTheHomeFolderLeavesNoWindowToOneThatIsNotProtected)
{
    startHomemade();
    windows.show({10, "mousepad", "mousepad", "", 1});

    EXPECT_THAT(heard, ElementsAre("did launch innocent"));
}

TEST_F(WindowAttribution, CopyThatAPanelStartedIsWhatItIsACopyOf)
{
    index.copies["/usr/bin/innocent"] = "mousepad";
    startPanel();
    startFromPanel(11, "innocent");
    windows.show({11, "Innocent", "innocent", "", 1});

    EXPECT_THAT(
        heard, ElementsAre("inserted mousepad", "will launch mousepad", "did launch mousepad")
    );
}

TEST_F(WindowAttribution, WindowOfWhatAPanelStartedIsNoneOfThePanel)
{
    startPanel();
    startFromPanel(11, "nobody");
    windows.show({11, "Something", "something", "", 1});
    EXPECT_THAT(heard, IsEmpty());

    windows.show({10, "xterm", "xterm", "", 2}); // one of its own
    EXPECT_THAT(heard, ElementsAre("will launch xterm", "did launch xterm"));
    windows.show({11, "Something", "something", "", 3});
    EXPECT_THAT(heard, testing::SizeIs(2));
}

TEST_F(WindowAttribution, WindowOfAChildThatWasThereBeforeIsItsApplications)
{
    processes.all.push_back(process(10, "xterm"));
    processes.ancestors[12] = {10, 1};
    windows.windows.push_back({12, "Something", "something", "", 1});
    start();
    windows.show({12, "Something", "something", "", 2});

    EXPECT_THAT(heard, IsEmpty());
    EXPECT_TRUE(desktop.activate(desktop.runningApplications("xterm").front(), 2));
    EXPECT_THAT(windows.forwardWindows, ElementsAre(1));
}

TEST_F(AttributionInTime, StartIsAwaitedOnlySoLong)
{
    index.add(known("xterm"));
    index.add(known("mousepad"));
    index.copies["/usr/bin/innocent"] = "mousepad";
    processes.all = {process(11, "innocent"), process(12, "nobody")};
    processes.ancestors = {{11, {10, 1}}, {12, {10, 1}}};
    start(10, "xterm");
    EXPECT_EQ(instanceOf({11, "Innocent", "innocent", "", 1}), tracker.instances().ofProcess(10));
    EXPECT_EQ(instanceOf({12, "Nobody", "nobody", "", 2}), tracker.instances().ofProcess(10));

    time += workspace::AwaitedStarts::LONGEST_START + std::chrono::seconds(1);

    EXPECT_EQ(instanceOf({12, "Nobody", "nobody", "", 2}), nullptr);
    const auto copy = instanceOf({11, "Innocent", "innocent", "", 1});
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->application->identifier, "mousepad");
}
