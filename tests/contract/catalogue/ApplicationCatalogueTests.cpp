// The catalogue as it follows real folders, and as the workspace asks it about real processes.
#include "desktop/ChildProcess.h"
#include "desktop/TemporaryFolder.h"
#include "desktop/Wait.h"
#include "linux/xdg/ApplicationCatalogue.h"
#include "linux/xdg/XdgApplicationIndex.h"
#include "processes/Recorder.h"

#include <chrono>

#include <gtest/gtest.h>

namespace {

class ApplicationCatalogueTest : public testing::Test
{
protected:
    ApplicationCatalogueTest()
    {
        catalogue.onChanged = [this] {
            std::string ids;
            for (const xdg::InstalledApplication& application : catalogue.current()->all()) {
                ids += application.entry.id + " ";
            }
            seen.add(ids);
        };
    }

    xdg::XdgEnvironment environment() const
    {
        xdg::XdgEnvironment result;
        result.dataFolders = {folder.path("home"), folder.path("system")};
        result.programFolders = {folder.path("own"), folder.path("bin")};
        return result;
    }

    static std::string entryOf(const std::string& name, const std::string& program)
    {
        return "[Desktop Entry]\nType=Application\nName=" + name + "\nExec=" + program + "\n";
    }

    void add(const std::string& id, const std::string& program)
    {
        folder.write("system/applications/" + id + ".desktop", entryOf(id, program));
    }

    /// At once, as installers do.
    void turn(const std::string& link, const std::string& target)
    {
        std::filesystem::create_symlink(target, folder.path("turned"));
        std::filesystem::rename(folder.path("turned"), folder.path(link));
    }

    bool waitFor(const std::string& ids)
    {
        return seen.waitForOne([&](const std::string& now) { return now == ids; });
    }

    desktop::TemporaryFolder folder;
    processes::Recorder<std::string> seen;
    processes::Recorder<std::string> lines;
    xdg::ApplicationCatalogue catalogue{
        environment(), xdg::Roles::shipped(), [this](std::string_view line) {
            lines.add(std::string(line));
        }};
};

} // namespace

TEST_F(ApplicationCatalogueTest, ApplicationThatIsInstalledAppears)
{
    catalogue.start();
    ASSERT_TRUE(waitFor(""));

    add("foo", "foo"); // its folder is new, too
    ASSERT_TRUE(waitFor("foo "));
    add("sub/bar", "bar");
    ASSERT_TRUE(waitFor("foo sub-bar "));
    add("sub/deep/baz", "baz");
    EXPECT_TRUE(waitFor("foo sub-bar sub-deep-baz "));
    EXPECT_TRUE(lines.all().empty());
}

TEST_F(ApplicationCatalogueTest, ApplicationThatIsRemovedDisappears)
{
    add("foo", "foo");
    add("bar", "bar");
    catalogue.start();
    ASSERT_TRUE(waitFor("bar foo "));

    std::filesystem::remove(folder.path("system/applications/foo.desktop"));

    EXPECT_TRUE(waitFor("bar "));
}

TEST_F(ApplicationCatalogueTest, FolderThatIsRemovedAndComesBackIsFollowed)
{
    add("foo", "foo");
    catalogue.start();
    ASSERT_TRUE(waitFor("foo "));

    std::filesystem::remove_all(folder.path("system"));
    ASSERT_TRUE(waitFor(""));
    add("bar", "bar");

    EXPECT_TRUE(waitFor("bar "));
}

TEST_F(ApplicationCatalogueTest, ProgramBehindLinksIsFollowedWhenOneOfThemIsTurned)
{
    const std::string before = folder.copyProgram("/bin/true", "one/program");
    const std::string after = folder.copyProgram("/bin/true", "two/program");
    std::filesystem::create_directories(folder.path("alternatives"));
    std::filesystem::create_directories(folder.path("bin"));
    std::filesystem::create_symlink("../one/program", folder.path("alternatives/foo"));
    std::filesystem::create_symlink("../alternatives/foo", folder.path("bin/foo"));
    add("foo", "foo");
    catalogue.start();
    ASSERT_TRUE(waitFor("foo "));
    ASSERT_TRUE(catalogue.current()->mayBeExecutedBy(before));

    turn("alternatives/foo", "../two/program");

    EXPECT_TRUE(desktop::waitUntil(
        [&] { return catalogue.current()->mayBeExecutedBy(after); }, std::chrono::seconds(10)
    ));
    EXPECT_FALSE(catalogue.current()->mayBeExecutedBy(before));
}

TEST_F(ApplicationCatalogueTest, ProgramThatComesWithItsFolderIsFollowed)
{
    add("foo", "foo");
    const std::string installed = folder.copyProgram("/bin/true", "bin/foo");
    catalogue.start();
    ASSERT_TRUE(waitFor("foo "));
    ASSERT_TRUE(catalogue.current()->mayBeExecutedBy(installed));

    folder.copyProgram("/bin/true", "new/foo");
    std::filesystem::rename(folder.path("new"), folder.path("own"));

    EXPECT_TRUE(desktop::waitUntil(
        [&] { return catalogue.current()->mayBeExecutedBy(folder.path("own/foo")); },
        std::chrono::seconds(10)
    ));
}

TEST_F(ApplicationCatalogueTest, FolderBehindALinkIsFollowedAsOftenAsThatIsTurned)
{
    folder.write("one/share/applications/sub/foo.desktop", entryOf("foo", "foo"));
    folder.write("two/share/applications/sub/bar.desktop", entryOf("bar", "bar"));
    folder.write("three/share/applications/qux.desktop", entryOf("qux", "qux"));
    std::filesystem::create_symlink("one/share", folder.path("system"));
    catalogue.start();
    ASSERT_TRUE(waitFor("sub-foo "));

    turn("system", "two/share");
    ASSERT_TRUE(waitFor("sub-bar "));
    folder.write("two/share/applications/sub/baz.desktop", entryOf("baz", "baz"));
    ASSERT_TRUE(waitFor("sub-bar sub-baz "));
    turn("system", "three/share");
    EXPECT_TRUE(waitFor("qux "));
}

TEST_F(ApplicationCatalogueTest, WhoHoldsACatalogueKeepsItAsItWas)
{
    add("foo", "foo");
    const std::shared_ptr<const xdg::Catalogue> held = catalogue.current();
    catalogue.start();

    add("bar", "bar");
    ASSERT_TRUE(waitFor("bar foo "));

    EXPECT_TRUE(held->all().empty());
}

TEST_F(ApplicationCatalogueTest, ProgramIsRecognisedByARealProcess)
{
    const std::string program = folder.copyProgram("/bin/sleep", "bin/program");
    const std::string script = folder.writeProgram("bin/script", "#!/bin/sh\nkill -STOP $$\n");
    add("program", "program");
    add("script", "script");
    catalogue.start();
    ASSERT_TRUE(waitFor("program script "));
    const xdg::XdgApplicationIndex index(catalogue);
    const auto idOf = [&](const desktop::ChildProcess& child) {
        // The arguments appear a moment after the start.
        std::optional<proc::ProcessFacts> facts;
        const auto read = [&] {
            facts = proc::ProcFilesystem().facts(child.id());
            return facts.has_value();
        };
        if (!desktop::waitUntil(read, std::chrono::seconds(10))) {
            return std::string("no facts");
        }
        const auto known = index.ofProcess(*facts);
        return known == nullptr ? "" : known->identifier;
    };

    EXPECT_EQ(idOf(desktop::ChildProcess({program, "60"})), "program");
    EXPECT_EQ(idOf(desktop::ChildProcess({script})), "script");
    EXPECT_EQ(idOf(desktop::ChildProcess({"/bin/sh", script})), "script");
    EXPECT_EQ(idOf(desktop::ChildProcess({"/bin/sleep", "60"})), "");
    EXPECT_EQ(index.executables().count(program), 1U);
}

TEST_F(ApplicationCatalogueTest, IndexAnswersFromTheCatalogue)
{
    folder.write(
        "system/applications/term.desktop",
        "[Desktop Entry]\nType=Application\nName=Term\nExec=term\nIcon=term-icon\n"
        "Categories=TerminalEmulator;\nNoDisplay=true\n"
    );
    catalogue.start();
    ASSERT_TRUE(waitFor("term "));
    const xdg::XdgApplicationIndex index(catalogue);

    for (const std::string& identifier : {std::string("term"), std::string("com.apple.Terminal")}) {
        const auto known = index.withIdentifier(identifier);
        ASSERT_NE(known, nullptr);
        EXPECT_EQ(known->identifier, "term");
        EXPECT_EQ(known->name, "Term");
        EXPECT_EQ(known->iconName, "term-icon");
        EXPECT_EQ(known->bundlePath, "/Applications/term.app");
        EXPECT_FALSE(known->shown);
    }
    EXPECT_TRUE(index.plays("term", "com.apple.Terminal"));
    EXPECT_FALSE(index.plays("term", "com.apple.ActivityMonitor"));
    EXPECT_FALSE(index.plays("other", "com.apple.Terminal"));
    EXPECT_EQ(index.withIdentifier("other"), nullptr);
    EXPECT_EQ(index.withIdentifier("com.apple.keychainaccess"), nullptr);
}

TEST_F(ApplicationCatalogueTest, WhatIsLearnedIsKnownAndKeptOnceItsApplicationIsChosen)
{
    const std::string real = folder.copyProgram("/bin/true", "opt/real");
    folder.writeProgram("bin/foo", "#!/bin/sh\n:\n");
    add("foo", "foo");
    const std::string file = folder.path("recognition.conf");
    xdg::ApplicationCatalogue keeping{
        environment(), xdg::Roles::shipped(), [](std::string_view /*line*/) {}, file};
    keeping.start();
    xdg::XdgApplicationIndex index(keeping);
    proc::ProcessFacts facts;
    facts.executable = real;
    facts.arguments = {"real"};
    ASSERT_EQ(index.ofProcess(facts), nullptr);

    index.learn(facts, "foo");

    EXPECT_TRUE(index.mayBeApplication(real));
    const auto known = index.ofProcess(facts);
    ASSERT_NE(known, nullptr);
    EXPECT_EQ(known->identifier, "foo");
    keeping.choose({"foo"});
    EXPECT_TRUE(desktop::waitUntil(
        [&] {
            return std::filesystem::exists(file) &&
                   desktop::readFile(file).find(real) != std::string::npos;
        },
        std::chrono::seconds(10)
    ));
}
