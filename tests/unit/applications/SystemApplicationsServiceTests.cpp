#include "applications/SystemApplicationsService.h"
#include "fakes/Applications.h"
#include "fakes/FakePlatform.h"

#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using applications::ApplicationEntityPtr;
using testing::ElementsAre;
using testing::IsEmpty;

class SystemApplicationsServiceTest : public testing::Test
{
protected:
    fakes::FakePlatform platform;
    applications::SystemApplicationsService service;

    static std::vector<std::string> namesOf(const std::vector<ApplicationEntityPtr>& list)
    {
        std::vector<std::string> names;
        for (const ApplicationEntityPtr& entity : list) {
            names.push_back(entity->name);
        }
        return names;
    }

    void addFolder(const std::string& path, const std::vector<std::string>& names)
    {
        platform.fileManager.folders[path] = names;
    }

    /// A bundle named for the last part of the path.
    void addNamedBundle(const std::string& path)
    {
        const std::string name = path.substr(path.rfind('/') + 1);
        fakes::addBundle(platform, path, name, "id " + path);
    }

    [[nodiscard]] std::vector<std::string> walk(const std::string& path) const
    {
        return namesOf(service.getLockableApplicationsFrom(path));
    }
};

} // namespace

TEST_F(SystemApplicationsServiceTest, AFolderYieldsItsApplicationsAndThoseOfItsFolders)
{
    addFolder("/Tools", {"A.app", "Sub"});
    addFolder("/Tools/Sub", {"B.app"});
    addNamedBundle("/Tools/A.app");
    addNamedBundle("/Tools/Sub/B.app");

    EXPECT_THAT(walk("/Tools"), ElementsAre("A.app", "B.app"));
}

TEST_F(SystemApplicationsServiceTest, TheWalkKeepsTheOrderInWhichEntriesAreFound)
{
    addFolder("/Tools", {"Z.app", "Sub", "A.app"});
    addFolder("/Tools/Sub", {"M.app", "Deep"});
    addFolder("/Tools/Sub/Deep", {"D.app"});
    for (const char* path :
         {"/Tools/Z.app", "/Tools/A.app", "/Tools/Sub/M.app", "/Tools/Sub/Deep/D.app"}) {
        addNamedBundle(path);
    }

    EXPECT_THAT(walk("/Tools"), ElementsAre("Z.app", "M.app", "D.app", "A.app"));
}

TEST_F(SystemApplicationsServiceTest, BundlesAndNamesWithAnExtensionAreNotDescendedInto)
{
    addFolder("/Tools", {"Foo.app", "Foo.localized", "Foo.APP", "Foo.application", "x.d"});
    for (const char* folder : {"Foo.app", "Foo.localized", "Foo.APP", "Foo.application", "x.d"}) {
        addFolder(std::string("/Tools/") + folder, {"Inner.app"});
        addNamedBundle(std::string("/Tools/") + folder + "/Inner.app");
    }

    EXPECT_THAT(walk("/Tools"), IsEmpty());
}

TEST_F(SystemApplicationsServiceTest, HiddenFoldersAndNamesThatEndWithADotAreDescendedInto)
{
    addFolder("/Tools", {".hidden", "dot."});
    addFolder("/Tools/.hidden", {"H.app"});
    addFolder("/Tools/dot.", {"D.app"});
    addNamedBundle("/Tools/.hidden/H.app");
    addNamedBundle("/Tools/dot./D.app");

    EXPECT_THAT(walk("/Tools"), ElementsAre("H.app", "D.app"));
}

TEST_F(SystemApplicationsServiceTest, TheSuffixOfABundleIsCaseSensitive)
{
    addFolder("/Tools", {"Foo.APP"});
    addNamedBundle("/Tools/Foo.APP");

    EXPECT_THAT(walk("/Tools"), IsEmpty());
}

TEST_F(SystemApplicationsServiceTest, AFileWithoutAnExtensionYieldsNothing)
{
    addFolder("/Tools", {"README", "A.app"});
    addNamedBundle("/Tools/A.app");

    EXPECT_THAT(walk("/Tools"), ElementsAre("A.app"));
}

TEST_F(SystemApplicationsServiceTest, AFolderThatCannotBeListedYieldsNothing)
{
    EXPECT_THAT(walk("/Nowhere"), IsEmpty());
    EXPECT_THAT(service.lockableApplications(), IsEmpty());
    EXPECT_THAT(platform.log.lines, IsEmpty());
    EXPECT_THAT(platform.log.diagnostics, IsEmpty());
}

TEST_F(
    SystemApplicationsServiceTest, ABundleWithoutANameIsUnnamedAndOneWithoutAnIdentifierIsLeftOut
)
{
    addFolder("/Tools", {"A.app", "B.app", "C.app"});
    platform.bundles.bundles["/Tools/A.app"] = {
        "/Tools/A.app", std::nullopt, std::nullopt, "org.example.A"};
    platform.bundles.bundles["/Tools/B.app"] = {"/Tools/B.app", "B", "b", std::nullopt};

    EXPECT_THAT(walk("/Tools"), ElementsAre("Unnamed"));
}

TEST_F(SystemApplicationsServiceTest, ThisProgramAndItsHelperAreLeftOut)
{
    addFolder("/Applications", {"Tarvel.app", "OlvoHelper.app", "Other.app"});
    fakes::addBundle(platform, "/Applications/Tarvel.app", "Tarvel", "com.quorvent.Tarvel");
    fakes::addBundle(platform, "/Applications/OlvoHelper.app", "Olvo", "com.quorvent.OlvoHelper");
    fakes::addBundle(platform, "/Applications/Other.app", "Other", "org.example.Other");

    EXPECT_THAT(namesOf(service.lockableApplications()), ElementsAre("Other"));
}

TEST_F(SystemApplicationsServiceTest, TheSameIdentifierAtTwoPathsIsListedTwice)
{
    addFolder("/Tools", {"A.app", "B.app"});
    fakes::addBundle(platform, "/Tools/A.app", "A", "org.example.Same");
    fakes::addBundle(platform, "/Tools/B.app", "B", "org.example.Same");

    EXPECT_THAT(walk("/Tools"), ElementsAre("A", "B"));
}

TEST_F(SystemApplicationsServiceTest, ASlashAtTheEndOfTheFolderIsNotDoubled)
{
    addFolder("/Tools/", {"A.app"});
    addNamedBundle("/Tools/A.app");

    EXPECT_THAT(walk("/Tools/"), ElementsAre("A.app"));
}

TEST_F(SystemApplicationsServiceTest, InstalledApplicationsAreSortedByFoldedName)
{
    addFolder("/Applications", {"1.app", "2.app", "3.app", "4.app", "5.app"});
    fakes::addBundle(platform, "/Applications/1.app", "Zeta", "1");
    fakes::addBundle(platform, "/Applications/2.app", "alpha", "2");
    fakes::addBundle(platform, "/Applications/3.app", "app9", "3");
    fakes::addBundle(platform, "/Applications/4.app", "App10", "4");
    fakes::addBundle(platform, "/Applications/5.app", "7 up", "5");

    EXPECT_THAT(
        namesOf(service.lockableApplications()),
        ElementsAre("7 up", "alpha", "App10", "app9", "Zeta")
    );
}

TEST_F(SystemApplicationsServiceTest, RunningApplicationsAreFilteredAndSortedByFoldedName)
{
    platform::RunningApplication background = fakes::runningApplication(3, "b", "Background");
    background.activationPolicy = platform::ActivationPolicy::Prohibited;
    platform.workspace.running = {
        fakes::runningApplication(1, "z", "Zeta"),
        fakes::runningApplication(2, "a", "alpha"),
        background,
        fakes::runningAccessory(4, "m", "Menu"),
        fakes::runningApplication(5, "a", "alpha"),
        fakes::runningApplication(6, "com.quorvent.Tarvel", "Tarvel"),
    };

    EXPECT_THAT(
        namesOf(service.lockableRunningApplications()),
        ElementsAre("alpha", "alpha", "Menu", "Zeta")
    );
}

TEST_F(SystemApplicationsServiceTest, WhatRanBeforeIsFilteredAndSortedOnAnyThread)
{
    const std::vector<platform::RunningApplication> before{
        fakes::runningApplication(1, "z", "Zeta"),
        fakes::runningApplication(2, "a", "alpha"),
        fakes::runningApplication(3, "com.quorvent.Tarvel", "Tarvel"),
    };
    std::vector<std::string> names;

    std::thread worker([&] { names = namesOf(service.lockableApplicationsAmong(before)); });
    platform.workspace.running = {fakes::runningApplication(4, "n", "New")};
    worker.join();

    EXPECT_THAT(names, ElementsAre("alpha", "Zeta"));
}

TEST_F(SystemApplicationsServiceTest, AllRunningApplicationsComeUnfilteredInThePlatformsOrder)
{
    platform.workspace.running = {
        fakes::runningApplication(2, "com.quorvent.Tarvel", "Tarvel"),
        fakes::runningAccessory(1, "m", "Menu"),
    };

    const auto running = service.runningNSApplications();

    ASSERT_EQ(running.size(), 2U);
    EXPECT_EQ(running[0].processIdentifier, 2);
    EXPECT_EQ(running[1].processIdentifier, 1);
}

TEST_F(SystemApplicationsServiceTest, TheFirstRunningInstanceIsTheAnswer)
{
    platform.workspace.running = {
        fakes::runningApplication(1, "org.example.Alpha", "First"),
        fakes::runningApplication(2, "org.example.Alpha", "Second"),
    };

    EXPECT_EQ(service.applicationIsRunning("org.example.Alpha")->name, "First");
    EXPECT_EQ(service.applicationIsRunning("org.example.alpha"), nullptr);
}

TEST_F(SystemApplicationsServiceTest, FocusActivatesOnlyTheFirstInstance)
{
    platform.workspace.running = {
        fakes::runningApplication(11, "org.example.Alpha", "First"),
        fakes::runningApplication(12, "org.example.Alpha", "Second"),
    };

    service.focusOnApplication("org.example.Alpha");

    EXPECT_THAT(platform.calls, ElementsAre("workspace activate 11 2"));
}

TEST_F(SystemApplicationsServiceTest, FocusDoesNothingWhenNoInstanceRuns)
{
    service.focusOnApplication("org.example.Alpha");

    EXPECT_THAT(platform.calls, IsEmpty());
}

TEST_F(SystemApplicationsServiceTest, TheHelperIsLaunchedFromTheBundleWithItsEnvironment)
{
    service.startHelperApplication();

    EXPECT_THAT(
        platform.calls,
        ElementsAre("workspace launch "
                    "/opt/Tarvel.app/Contents/Library/LoginItems/OlvoHelper.app "
                    "65536 StartFromMaster=1")
    );
}

TEST_F(SystemApplicationsServiceTest, AFailedLaunchOfTheHelperIsDropped)
{
    platform.workspace.failing = true;

    service.startHelperApplication();

    EXPECT_EQ(platform.calls.size(), 1U);
    EXPECT_THAT(platform.log.lines, IsEmpty());
    EXPECT_THAT(platform.log.diagnostics, IsEmpty());
}
