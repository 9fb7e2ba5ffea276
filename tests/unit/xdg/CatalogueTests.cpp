// Which entries count, what is listed, and what windows and roles tell.
#include "CatalogueTest.h"

#include <filesystem>

#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;
using xdg_tests::Names;
using Catalogue = xdg_tests::CatalogueTest;

} // namespace

TEST_F(Catalogue, EntryWhoseIdCouldNotBeKeptIsPassedOver)
{
    for (const char* file : {"a;b", " blank", "blank ", "line\nbreak", "\xff", "good-\xc3\xa4"}) {
        add(std::string(file) + ".desktop", entry("Foo"));
    }

    EXPECT_EQ(ids(), Names{"good-\xc3\xa4"});
}

TEST_F(Catalogue, IdIsTheNameOfTheFileWithItsFolders)
{
    add("foo.desktop", entry("Foo"));
    add("kde/sub/bar.desktop", entry("Bar"));
    add("readme.txt", entry("None"));

    EXPECT_EQ(ids(), (Names{"foo", "kde-sub-bar"}));
}

TEST_F(Catalogue, UsersOwnEntryHidesTheSystems)
{
    add("foo.desktop", entry("System"));
    addForUser("foo.desktop", entry("Own"));

    EXPECT_EQ(ids(), Names{"foo"});
    EXPECT_EQ(catalogue->find("foo")->entry.name, "Own");
}

TEST_F(Catalogue, HiddenEntryDeletesTheId)
{
    add("foo.desktop", entry("System"));
    addForUser("foo.desktop", "[Desktop Entry]\nHidden=true\n");

    EXPECT_TRUE(ids().empty());
}

TEST_F(Catalogue, DamagedEntryDoesNotHideTheSystems)
{
    add("foo.desktop", entry("System"));
    addForUser("foo.desktop", "[Desktop Entry]\nName=\xFF\n");

    EXPECT_EQ(ids(), Names{"foo"});
}

TEST_F(Catalogue, EntryWhoseTryExecFailsIsDropped)
{
    add("foo.desktop", entry("Foo", "Exec=foo\nTryExec=missing\n"));
    add("bar.desktop", entry("Bar", "Exec=bar\nTryExec=" + folder.path("bin/bar") + "\n"));

    EXPECT_EQ(ids(), Names{"bar"});
}

TEST_F(Catalogue, OnlyWhatIsMeantForThisDesktopIsShown)
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

TEST_F(Catalogue, LoopsPipesAndUnreadableThingsAreSkipped)
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

TEST_F(Catalogue, RoleIsPlayedByThePreferredEntry)
{
    add("aaa.desktop", entry("A", "Exec=foo\nCategories=TerminalEmulator;\n"));
    add("org.gnome.Terminal.desktop", entry("B", "Exec=bar\nCategories=TerminalEmulator;\n"));
    build();

    ASSERT_NE(catalogue->playing("com.apple.Terminal"), nullptr);
    EXPECT_EQ(catalogue->playing("com.apple.Terminal")->entry.id, "org.gnome.Terminal");
    EXPECT_EQ(catalogue->playing("com.apple.keychainaccess"), nullptr);
}

TEST_F(Catalogue, RoleIsRatherPlayedByAShownEntry)
{
    add("aaa.desktop", entry("A", "Exec=foo\nCategories=TerminalEmulator;\nNoDisplay=true\n"));
    add("bbb.desktop", entry("B", "Exec=bar\nCategories=TerminalEmulator;\n"));
    build();

    EXPECT_EQ(catalogue->playing("com.apple.Terminal")->entry.id, "bbb");
}

TEST_F(Catalogue, WindowIsKnownByItsClass)
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

TEST_F(Catalogue, MissingFoldersGiveAnEmptyCatalogue)
{
    environment.dataFolders = {"/nowhere/at/all"};
    environment.programFolders = {};

    EXPECT_TRUE(ids().empty());
    EXPECT_TRUE(catalogue->files().empty());
}
