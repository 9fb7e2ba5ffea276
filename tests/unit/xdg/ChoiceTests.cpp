// What a chosen application is known by outlives whatever is done to its entry.
#include "desktop/TemporaryFolder.h"
#include "linux/xdg/CatalogueBuilder.h"

#include <filesystem>

#include <gtest/gtest.h>

namespace {

class ChoiceTest : public testing::Test
{
protected:
    ChoiceTest()
    {
        environment.dataFolders = {folder.path("home"), folder.path("system")};
        environment.programFolders = {folder.path("bin")};
        folder.copyProgram("/bin/true", "bin/foo");
        folder.copyProgram("/bin/true", "bin/bar");
        addToSystem("foo", "Name=Foo\nExec=foo %U\nStartupWMClass=FooWindow\n");
        addToSystem("bar", "Name=Bar\nExec=bar\n");
        choice.identifiers = {"foo"};
        build();
    }

    void addToSystem(const std::string& id, const std::string& lines)
    {
        folder.write(
            "system/applications/" + id + ".desktop", "[Desktop Entry]\nType=Application\n" + lines
        );
    }

    void addToHome(const std::string& id, const std::string& lines)
    {
        folder.write(
            "home/applications/" + id + ".desktop", "[Desktop Entry]\nType=Application\n" + lines
        );
    }

    void build() { catalogue = xdg::CatalogueBuilder(environment, roles).build(choice); }

    std::string of(const std::string& program, const std::vector<std::string>& arguments = {"x"})
    {
        build();
        proc::ProcessFacts facts;
        facts.executable = std::filesystem::path(folder.path("bin/" + program)).lexically_normal();
        facts.arguments = arguments;
        const auto* found =
            catalogue->ofProcess(facts, [](pid_t) { return std::vector<std::string>(); });
        return found == nullptr ? "" : found->entry.id;
    }

    desktop::TemporaryFolder folder;
    xdg::XdgEnvironment environment;
    const xdg::Roles& roles = xdg::Roles::shipped();
    xdg::Choice choice;
    std::shared_ptr<const xdg::Catalogue> catalogue;
};

} // namespace

TEST_F(ChoiceTest, IsKeptOnlyOfWhatWasChosen)
{
    ASSERT_EQ(choice.kept.size(), 1U);
    EXPECT_EQ(choice.kept.at("foo").name, "Foo");
    EXPECT_EQ(choice.kept.at("foo").executable, folder.path("bin/foo"));
    EXPECT_TRUE(catalogue->find("foo")->chosen);
    EXPECT_FALSE(catalogue->find("bar")->chosen);
}

TEST_F(ChoiceTest, EntryThatIsHiddenInTheHomeFolderIsStillKnown)
{
    addToHome("foo", "Hidden=true\n");

    EXPECT_EQ(of("foo"), "foo");
    EXPECT_EQ(catalogue->find("foo")->entry.name, "Foo");
    EXPECT_FALSE(catalogue->find("foo")->shown);
    EXPECT_EQ(catalogue->ofWindow({"FooWindow"})->entry.id, "foo");
}

TEST_F(ChoiceTest, EntryThatWasHiddenInTheHomeFolderBeforeTheChoiceIsKnown)
{
    addToHome("foo", "Hidden=true\n");
    addToHome("own", "Name=Own\nExec=bar --own\nHidden=true\n");
    addToSystem("gone", "Name=Gone\nExec=bar --gone\nHidden=true\n");
    addToSystem("term", "Name=Term\nExec=bar --term\nCategories=TerminalEmulator;\n");
    addToHome("term", "Hidden=true\n");
    choice = {};
    choice.identifiers = {"foo", "own", "gone", "com.apple.Terminal"};

    EXPECT_EQ(of("foo"), "foo");
    EXPECT_FALSE(catalogue->find("foo")->shown);
    EXPECT_EQ(catalogue->ofWindow({"FooWindow"})->entry.id, "foo");
    EXPECT_EQ(of("bar", {"bar", "--term"}), "term");
    EXPECT_EQ(catalogue->find("own"), nullptr) << "nobody else knows it";
    EXPECT_EQ(catalogue->find("gone"), nullptr) << "it is as good as deleted";
}

TEST_F(ChoiceTest, EntryThatIsOverriddenInTheHomeFolderIsKnownByBoth)
{
    addToHome("foo", "Name=Other\nExec=bar\nStartupWMClass=Other\n");

    EXPECT_EQ(of("foo"), "foo");
    EXPECT_EQ(of("bar"), "foo");
    EXPECT_EQ(catalogue->ofWindow({"FooWindow"})->entry.id, "foo");
    EXPECT_EQ(catalogue->ofWindow({"Other"})->entry.id, "foo");
}

TEST_F(ChoiceTest, EntryThatIsSaidToRunInATerminalKeepsItsProgramAndItsWindows)
{
    addToHome("foo", "Name=Other\nExec=true\nTerminal=true\n");

    EXPECT_EQ(of("foo"), "foo");
    for (const std::string name : {"FooWindow", "foo"}) {
        const auto* found = catalogue->ofWindow({name});
        ASSERT_NE(found, nullptr) << name;
        EXPECT_EQ(found->entry.id, "foo");
    }
}

TEST_F(ChoiceTest, EntryThatWasOverriddenBeforeTheChoiceIsKnownByBoth)
{
    addToHome("foo", "Name=Other\nExec=bar\n");
    choice = {};
    choice.identifiers = {"foo"};

    EXPECT_EQ(of("foo"), "foo");
}

TEST_F(ChoiceTest, EntryThatWasSaidToRunInATerminalBeforeTheChoiceIsKnownByItsProgram)
{
    addToHome("foo", "Name=Other\nExec=true\nTerminal=true\n");
    choice = {};
    choice.identifiers = {"foo"};

    EXPECT_EQ(of("foo"), "foo");
}

TEST_F(ChoiceTest, EntryWhoseProgramIsSaidToBeMissingIsStillKnown)
{
    addToHome("foo", "Name=Foo\nExec=foo\nTryExec=missing\n");

    EXPECT_EQ(of("foo"), "foo");
}

TEST_F(ChoiceTest, AnotherEntryForTheSameProgramDoesNotHideIt)
{
    addToHome("aaa", "Name=Innocent\nExec=foo --anyway\n");

    EXPECT_EQ(of("foo", {"foo", "--anyway"}), "foo");
    choice.identifiers = {"bar"};
    EXPECT_EQ(of("foo", {"foo", "--anyway"}), "aaa");
}

TEST_F(ChoiceTest, DeletedEntryIsStillKnown)
{
    std::filesystem::remove(folder.path("system/applications/foo.desktop"));

    EXPECT_EQ(of("foo"), "foo");
    EXPECT_NE(catalogue->find("foo"), nullptr);
}

TEST_F(ChoiceTest, ApplicationThatIsRemovedAndInstalledAgainIsKnownAgain)
{
    std::filesystem::remove(folder.path("system/applications/foo.desktop"));
    std::filesystem::remove(folder.path("bin/foo"));
    build();
    folder.copyProgram("/bin/true", "bin/foo");
    addToSystem("foo", "Name=Foo\nExec=foo %U\n");

    EXPECT_EQ(of("foo"), "foo");
}

TEST_F(ChoiceTest, UpgradeToAnotherPathIsKnownByBoth)
{
    folder.copyProgram("/bin/true", "bin/foo2");
    addToSystem("foo", "Name=Foo\nExec=foo2\n");

    EXPECT_EQ(of("foo2"), "foo");
    EXPECT_EQ(of("foo"), "foo");
}

TEST_F(ChoiceTest, AfterAnyNumberOfUpgradesTheFirstPathAndTheLastAreKnown)
{
    constexpr int UPGRADES = 70;
    for (int number = 1; number <= UPGRADES; ++number) {
        const std::string name = "foo" + std::to_string(number);
        folder.copyProgram("/bin/true", "bin/" + name);
        addToSystem("foo", "Name=Foo\nExec=" + name + "\n");
        build();
    }

    EXPECT_EQ(of("foo70"), "foo");
    EXPECT_EQ(of("foo"), "foo");
    EXPECT_EQ(of("bar"), "bar");
}

TEST_F(ChoiceTest, PlacesOfAProgramThatIsMissingAreKnownAndNotKept)
{
    for (int number = 0; number < 100; ++number) {
        environment.programFolders.push_back(folder.path("bin" + std::to_string(number)));
    }
    addToSystem("foo", "Name=Foo\nExec=late\n");

    EXPECT_EQ(of("../bin99/late"), "foo");
    EXPECT_EQ(of("foo"), "foo");
    EXPECT_EQ(choice.kept.at("foo").keys.size(), 1U);
}

TEST_F(ChoiceTest, ChoiceThatIsNotKnownYetIsWhatWasKept)
{
    std::filesystem::remove(folder.path("system/applications/foo.desktop"));
    choice.identifiers.reset();

    EXPECT_EQ(of("foo"), "foo");
    EXPECT_EQ(choice.kept.size(), 1U);
}

TEST_F(ChoiceTest, WhatIsNoLongerChosenIsForgotten)
{
    std::filesystem::remove(folder.path("system/applications/foo.desktop"));
    choice.identifiers = {"bar"};

    EXPECT_EQ(of("foo"), "");
    EXPECT_EQ(choice.kept.count("foo"), 0U);
    EXPECT_EQ(choice.kept.count("bar"), 1U);
}

TEST_F(ChoiceTest, RoleChoosesAllThatPlayIt)
{
    addToSystem("term", "Name=Term\nExec=bar --term\nCategories=TerminalEmulator;\n");
    choice.identifiers = {"com.apple.Terminal"};
    build();
    addToHome("term", "Name=Term\nExec=bar --term\nCategories=Game;\n");

    EXPECT_EQ(of("bar", {"bar", "--term"}), "term");
    EXPECT_EQ(catalogue->find("term")->roles, (std::vector<std::string>{"com.apple.Terminal"}));
}

TEST_F(ChoiceTest, ApplicationThatIsInstalledAfterItWasChosenIsKept)
{
    choice.identifiers = {"later"};
    build();
    EXPECT_TRUE(choice.kept.empty());
    addToSystem("later", "Name=Later\nExec=bar --later\n");
    build();

    EXPECT_EQ(choice.kept.count("later"), 1U);
}

TEST_F(ChoiceTest, CopyOfItsProgramOrScriptIsKnown)
{
    const std::string text = "#!/bin/sh\n:\n";
    folder.write("bin/script", text);
    std::filesystem::permissions(folder.path("bin/script"), std::filesystem::perms::owner_all);
    addToSystem("script", "Name=Script\nExec=script\n");
    folder.copyProgram("/bin/true", "innocent");
    folder.copyProgram("/bin/ls", "other");
    folder.write("copied", text);
    folder.write("changed", "#!/bin/sh\n;\n");
    using Kind = xdg::ExecutionKey::Kind;
    const auto ofCopy = [this](Kind kind, const std::string& name) -> std::string {
        const auto* found = catalogue->ofCopy(kind, folder.path(name));
        return found == nullptr ? "" : found->entry.id;
    };
    choice.identifiers = {"foo", "script"};
    build();

    EXPECT_EQ(ofCopy(Kind::Executable, "innocent"), "foo");
    EXPECT_EQ(ofCopy(Kind::Executable, "bin/foo"), "") << "it is the original";
    EXPECT_EQ(ofCopy(Kind::Executable, "other"), "");
    EXPECT_EQ(ofCopy(Kind::Executable, "missing"), "");
    EXPECT_EQ(ofCopy(Kind::Script, "innocent"), "");
    EXPECT_EQ(ofCopy(Kind::Script, "copied"), "script");
    EXPECT_EQ(ofCopy(Kind::Script, "changed"), "");
    choice.identifiers.emplace();
    build();
    EXPECT_EQ(ofCopy(Kind::Executable, "innocent"), "") << "its original is not chosen any more";
}

TEST_F(ChoiceTest, CopyAmongTheProgramsIsLearnedAndNoOther)
{
    folder.copyProgram("/bin/true", "bin/innocent");
    folder.copyProgram("/bin/ls", "bin/other");
    build();
    const auto isLearned = [this](const std::string& name) {
        proc::ProcessFacts facts;
        facts.executable = folder.path("bin/" + name);
        return catalogue->keyToLearn(facts, "foo").has_value();
    };

    EXPECT_TRUE(isLearned("innocent"));
    EXPECT_FALSE(isLearned("other"));
}
