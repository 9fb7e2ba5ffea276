// The catalogue, read from folders that are made for each case.
#include "desktop/TemporaryFolder.h"
#include "linux/xdg/CatalogueBuilder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

class CatalogueTest : public testing::Test
{
protected:
    CatalogueTest()
    {
        environment.dataFolders = {folder.path("home"), folder.path("system")};
        environment.programFolders = {folder.path("local/bin"), folder.path("bin")};
        folder.copyProgram("/bin/true", "bin/foo");
        folder.copyProgram("/bin/true", "bin/bar");
    }

    static std::string entry(const std::string& name, const std::string& more = "Exec=foo %U\n")
    {
        return "[Desktop Entry]\nType=Application\nName=" + name + "\n" + more;
    }

    void add(const std::string& file, const std::string& text)
    {
        folder.write("system/applications/" + file, text);
    }

    void addForUser(const std::string& file, const std::string& text)
    {
        folder.write("home/applications/" + file, text);
    }

    void build() { catalogue = xdg::buildCatalogue(environment, xdg::Roles::shipped()); }

    Names ids()
    {
        build();
        Names result;
        for (const xdg::InstalledApplication& application : catalogue->all()) {
            result.push_back(application.entry.id);
        }
        return result;
    }

    Names shownIds()
    {
        build();
        Names result;
        for (const xdg::InstalledApplication& application : catalogue->all()) {
            if (application.shown) {
                result.push_back(application.entry.id);
            }
        }
        return result;
    }

    std::string ofProcess(const std::string& executable, Names arguments)
    {
        build();
        proc::ProcessFacts facts;
        facts.executable = executable;
        facts.arguments = std::move(arguments);
        facts.workingDirectory = "/";
        const auto* found = catalogue->ofProcess(facts, [this](pid_t) { return claims; });
        return found == nullptr ? "" : found->entry.id;
    }

    desktop::TemporaryFolder folder;
    xdg::XdgEnvironment environment;
    std::shared_ptr<const xdg::Catalogue> catalogue;
    Names claims;
};

} // namespace

TEST_F(CatalogueTest, IdIsTheNameOfTheFileWithItsFolders)
{
    add("foo.desktop", entry("Foo"));
    add("kde/sub/bar.desktop", entry("Bar"));
    add("readme.txt", entry("None"));

    EXPECT_EQ(ids(), (Names{"foo", "kde-sub-bar"}));
}

TEST_F(CatalogueTest, UsersOwnEntryHidesTheSystems)
{
    add("foo.desktop", entry("System"));
    addForUser("foo.desktop", entry("Own"));

    EXPECT_EQ(ids(), Names{"foo"});
    EXPECT_EQ(catalogue->find("foo")->entry.name, "Own");
}

TEST_F(CatalogueTest, HiddenEntryDeletesTheId)
{
    add("foo.desktop", entry("System"));
    addForUser("foo.desktop", "[Desktop Entry]\nHidden=true\n");

    EXPECT_TRUE(ids().empty());
}

TEST_F(CatalogueTest, DamagedEntryDoesNotHideTheSystems)
{
    add("foo.desktop", entry("System"));
    addForUser("foo.desktop", "[Desktop Entry]\nName=\xFF\n");

    EXPECT_EQ(ids(), Names{"foo"});
}

TEST_F(CatalogueTest, EntryWhoseTryExecFailsIsDropped)
{
    add("foo.desktop", entry("Foo", "Exec=foo\nTryExec=missing\n"));
    add("bar.desktop", entry("Bar", "Exec=bar\nTryExec=" + folder.path("bin/bar") + "\n"));

    EXPECT_EQ(ids(), Names{"bar"});
}

TEST_F(CatalogueTest, OnlyWhatIsMeantForThisDesktopIsShown)
{
    add("a.desktop", entry("A"));
    add("b.desktop", entry("B", "Exec=foo\nNoDisplay=true\n"));
    add("c.desktop", entry("C", "Exec=foo\nOnlyShowIn=GNOME;KDE;\n"));
    add("d.desktop", entry("D", "Exec=foo\nNotShowIn=KDE;\n"));
    add("e.desktop", entry("E", "Exec=foo\nTerminal=true\n"));

    EXPECT_EQ(shownIds(), (Names{"a", "d"}));
    environment.desktops = {"KDE"};
    EXPECT_EQ(shownIds(), (Names{"a", "c"}));
    EXPECT_EQ(catalogue->all().size(), 5U);
}

TEST_F(CatalogueTest, LoopsPipesAndUnreadableThingsAreSkipped)
{
    add("foo.desktop", entry("Foo"));
    fs::create_directory_symlink("..", folder.path("system/applications/up"));
    fs::create_symlink("loop.desktop", folder.path("system/applications/loop.desktop"));
    fs::create_symlink("/nowhere", folder.path("system/applications/gone.desktop"));
    ::mkfifo(folder.path("system/applications/pipe.desktop").c_str(), 0600);
    fs::create_directories(folder.path("system/applications/folder.desktop"));
    add("locked/bar.desktop", entry("Bar"));
    fs::permissions(folder.path("system/applications/locked"), fs::perms::none);
    add("big.desktop", entry("Big") + std::string(2 * 1024 * 1024, '#'));

    const Names found = ids();

    EXPECT_NE(std::find(found.begin(), found.end(), "foo"), found.end());
    EXPECT_EQ(std::find(found.begin(), found.end(), "big"), found.end());
    EXPECT_LE(found.size(), 2U); // an administrator can read the locked one
    fs::permissions(folder.path("system/applications/locked"), fs::perms::owner_all);
}

TEST_F(CatalogueTest, ProgramIsFoundByNameAndBehindLinks)
{
    add("foo.desktop", entry("Foo"));
    fs::create_symlink(folder.path("bin/bar"), folder.path("bin/link"));
    add("bar.desktop", entry("Bar", "Exec=" + folder.path("bin/link") + "\n"));

    EXPECT_EQ(ofProcess(folder.path("bin/foo"), {"foo"}), "foo");
    EXPECT_EQ(ofProcess(folder.path("bin/bar"), {"bar"}), "bar");
    EXPECT_EQ(catalogue->find("foo")->executable, folder.path("bin/foo"));
}

TEST_F(CatalogueTest, EarlierFolderOfThePathWins)
{
    add("foo.desktop", entry("Foo"));
    folder.copyProgram("/bin/true", "local/bin/foo");

    EXPECT_EQ(ofProcess(folder.path("local/bin/foo"), {"foo"}), "foo");
    EXPECT_EQ(ofProcess(folder.path("bin/foo"), {"foo"}), "");
}

TEST_F(CatalogueTest, ProgramThatIsInstalledLaterIsKnownByItsPlace)
{
    add("late.desktop", entry("Late", "Exec=late\n"));

    EXPECT_EQ(ofProcess(folder.path("bin/late"), {"late"}), "late");
    EXPECT_EQ(ofProcess("/usr/bin/dash", {"sh", folder.path("bin/late")}), "late");
}

TEST_F(CatalogueTest, ScriptIsKnownByItsFileAndNotByItsInterpreter)
{
    folder.writeProgram("bin/script", "#!/bin/sh\n");
    add("script.desktop", entry("Script", "Exec=script\n"));
    add("python.desktop", entry("Python", "Exec=/usr/bin/python3 /opt/tool.py --gui\n"));

    EXPECT_EQ(
        ofProcess(fs::canonical("/bin/sh"), {"/bin/sh", folder.path("bin/script")}), "script"
    );
    EXPECT_EQ(ofProcess(fs::canonical("/bin/sh"), {"sh"}), "");
    EXPECT_EQ(ofProcess("/usr/bin/python3.11", {"python3", "/opt/tool.py"}), "python");
    EXPECT_EQ(ofProcess("/usr/bin/python3.11", {"python3", "/opt/other.py"}), "");
}

TEST_F(CatalogueTest, ProgramIsFoundInTheFolderInWhichTheEntryIsExecuted)
{
    folder.copyProgram("/bin/true", "game/start");
    folder.write("game/main.py", "");
    const std::string game = folder.path("game");
    add("path.desktop", entry("Path", "Exec=./start\nPath=" + game + "\n"));
    add("script.desktop",
        entry("Script", "Exec=/usr/bin/python3 main.py --x\nPath=" + game + "\n"));
    folder.copyProgram("/bin/true", "other/start");
    add("shell.desktop",
        entry("Shell", "Exec=sh -c \"cd " + folder.path("other") + " && ./start\"\n"));

    EXPECT_EQ(ofProcess(game + "/start", {"./start"}), "path");
    EXPECT_EQ(ofProcess(folder.path("other/start"), {"./start"}), "shell");
    EXPECT_EQ(ofProcess("/usr/bin/python3.11", {"python3", game + "/main.py"}), "script");
    EXPECT_EQ(ofProcess("/usr/bin/python3.11", {"python3", "main.py", "--x"}), "");
}

TEST_F(CatalogueTest, RelativeProgramOfAnEntryWithoutAFolderIsNobodys)
{
    add("nowhere.desktop", entry("Nowhere", "Exec=./start\n"));
    add("relative.desktop", entry("Relative", "Exec=./start\nPath=game\n"));

    EXPECT_EQ(ofProcess(folder.path("game/start"), {"./start"}), "");
    EXPECT_TRUE(catalogue->find("relative")->keys.empty());
}

TEST_F(CatalogueTest, EntryOfAnotherDesktopIsRecognisedAllTheSame)
{
    environment.desktops = {"KDE"};
    add("foo.desktop", entry("Foo", "Exec=foo\nOnlyShowIn=GNOME;\n"));

    EXPECT_EQ(ofProcess(folder.path("bin/foo"), {"foo"}), "foo");
    EXPECT_TRUE(shownIds().empty());
}

TEST_F(CatalogueTest, ProgramBehindWrappersIsTheApplications)
{
    folder.copyProgram("/bin/true", "bin/java");
    add("jar.desktop", entry("Jar", "Exec=env A=b java -Xmx1g -jar /opt/tool.jar %F\n"));
    add("wrapped.desktop", entry("Wrapped", "Exec=sh -c \"exec nice foo --x\"\n"));

    EXPECT_EQ(ofProcess(folder.path("bin/java"), {"java", "-jar", "/opt/tool.jar"}), "jar");
    EXPECT_EQ(ofProcess(folder.path("bin/java"), {"java", "-jar", "/opt/other.jar"}), "");
    EXPECT_EQ(ofProcess(folder.path("bin/foo"), {"foo", "--x"}), "wrapped");
    EXPECT_EQ(ofProcess("/usr/bin/env", {"env"}), "");
}

TEST_F(CatalogueTest, EntryForTerminalsNeverClaimsAProgram)
{
    add("foo.desktop", entry("Foo", "Exec=foo\nTerminal=true\n"));

    EXPECT_EQ(ofProcess(folder.path("bin/foo"), {"foo"}), "");
}

TEST_F(CatalogueTest, ServiceWhoseNameIsAnIdIsTheApplication)
{
    add("org.Foo.desktop", entry("Foo"));
    folder.write(
        "system/dbus-1/services/any.service",
        "[D-BUS Service]\nName=org.Foo\nExec=" + folder.path("bin/bar") + " --server\n"
    );
    folder.write(
        "system/dbus-1/services/other.service",
        "[D-BUS Service]\nName=org.Other\nExec=/usr/bin/other\n"
    );

    EXPECT_EQ(ofProcess(folder.path("bin/bar"), {"bar", "--server"}), "org.Foo");
    EXPECT_EQ(ofProcess("/usr/bin/other", {"other"}), "");
}

TEST_F(CatalogueTest, LaunchersClaimDecidesBetweenEntriesOfOneProgram)
{
    add("a.desktop", entry("A"));
    add("b.desktop", entry("B"));
    const std::string program = folder.path("bin/foo");

    EXPECT_EQ(ofProcess(program, {"foo"}), "a");
    claims = {folder.path("system/applications/b.desktop")};
    EXPECT_EQ(ofProcess(program, {"foo"}), "b");
    claims = {"/nowhere/c.desktop"};
    EXPECT_EQ(ofProcess(program, {"foo"}), "a");
}

TEST_F(CatalogueTest, ShownEntryWinsATie)
{
    add("a.desktop", entry("A", "Exec=foo\nNoDisplay=true\n"));
    add("b.desktop", entry("B"));

    EXPECT_EQ(ofProcess(folder.path("bin/foo"), {"foo"}), "b");
}

TEST_F(CatalogueTest, RoleIsPlayedByThePreferredEntry)
{
    add("aaa.desktop", entry("A", "Exec=foo\nCategories=TerminalEmulator;\n"));
    add("org.gnome.Terminal.desktop", entry("B", "Exec=bar\nCategories=TerminalEmulator;\n"));
    build();

    ASSERT_NE(catalogue->playing("com.apple.Terminal"), nullptr);
    EXPECT_EQ(catalogue->playing("com.apple.Terminal")->entry.id, "org.gnome.Terminal");
    EXPECT_EQ(catalogue->playing("com.apple.keychainaccess"), nullptr);
}

TEST_F(CatalogueTest, RoleIsRatherPlayedByAShownEntry)
{
    add("aaa.desktop", entry("A", "Exec=foo\nCategories=TerminalEmulator;\nNoDisplay=true\n"));
    add("bbb.desktop", entry("B", "Exec=bar\nCategories=TerminalEmulator;\n"));
    build();

    EXPECT_EQ(catalogue->playing("com.apple.Terminal")->entry.id, "bbb");
}

TEST_F(CatalogueTest, WindowIsKnownByItsClass)
{
    add("org.xfce.mousepad.desktop", entry("Mousepad"));
    add("debian-xterm.desktop", entry("XTerm", "Exec=foo\nStartupWMClass=XTerm\n"));
    add("vim.desktop", entry("Vim", "Exec=bar\nTerminal=true\n"));
    build();
    const auto ofWindow = [&](const std::string& windowClass, const std::string& instance) {
        const auto* found = catalogue->ofWindow({windowClass, instance});
        return found == nullptr ? "" : found->entry.id;
    };

    EXPECT_EQ(ofWindow("Mousepad", "mousepad"), "org.xfce.mousepad");
    EXPECT_EQ(ofWindow("org.xfce.mousepad", ""), "org.xfce.mousepad");
    EXPECT_EQ(ofWindow("XTerm", "xterm"), "debian-xterm");
    EXPECT_EQ(ofWindow("Unknown", "xterm"), "debian-xterm");
    EXPECT_EQ(ofWindow("Vim", "vim"), "");
    EXPECT_EQ(ofWindow("", ""), "");
}

TEST_F(CatalogueTest, MissingFoldersGiveAnEmptyCatalogue)
{
    environment.dataFolders = {"/nowhere/at/all"};
    environment.programFolders = {};

    EXPECT_TRUE(ids().empty());
    EXPECT_TRUE(catalogue->files().empty());
}
