#include "Facts.h"
#include "FakeApplicationIndex.h"
#include "linux/workspace/OwnPrograms.h"

#include <gtest/gtest.h>

namespace {

const platform::Bundle MAIN_BUNDLE{
    "/opt/Tarvel.app",
    std::string("Tarvel"),
    std::string("Tarvel"),
    std::string("com.quorvent.Tarvel")};
constexpr auto HELPER = "/opt/Tarvel.app/Contents/Library/LoginItems/OlvoHelper.app/OlvoHelper";

proc::ProcessFacts executing(const std::string& executable)
{
    proc::ProcessFacts facts;
    facts.executable = executable;
    return facts;
}

} // namespace

TEST(OwnPrograms, AgentAndHelperAreKnownByWhereTheyStand)
{
    workspace::FakeApplicationIndex others;
    const workspace::OwnPrograms programs(MAIN_BUNDLE, others);

    EXPECT_EQ(
        programs.ofProcess(executing("/opt/Tarvel.app/Tarvel"))->identifier, "com.quorvent.Tarvel"
    );
    EXPECT_EQ(programs.ofProcess(executing(HELPER))->identifier, "com.quorvent.OlvoHelper");
    EXPECT_FALSE(programs.ofProcess(executing(HELPER))->shown);
    EXPECT_EQ(programs.withIdentifier("com.quorvent.OlvoHelper")->executable, HELPER);
}

TEST(OwnPrograms, ACopyOfTheHelperElsewhereIsNotTheHelper)
{
    workspace::FakeApplicationIndex others;
    const workspace::OwnPrograms programs(MAIN_BUNDLE, others);

    EXPECT_EQ(programs.ofProcess(executing("/tmp/OlvoHelper")), nullptr);
}

TEST(OwnPrograms, EverythingElseIsAskedOfTheIndex)
{
    workspace::FakeApplicationIndex others;
    others.add(workspace::known("mousepad"));
    const workspace::OwnPrograms programs(MAIN_BUNDLE, others);

    EXPECT_EQ(programs.ofProcess(workspace::process(1, "mousepad"))->identifier, "mousepad");
    EXPECT_EQ(programs.withIdentifier("mousepad")->identifier, "mousepad");
    EXPECT_TRUE(programs.executables().contains("/usr/bin/mousepad"));
    EXPECT_TRUE(programs.executables().contains(HELPER));
}
