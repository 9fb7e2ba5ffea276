// By what applications are known that start.
#include "CatalogueTest.h"

#include <filesystem>

namespace {

namespace fs = std::filesystem;
using CatalogueExecution = xdg_tests::CatalogueTest;

} // namespace

TEST_F(CatalogueExecution, ProgramIsFoundByNameAndBehindLinks)
{
    add("foo.desktop", entry("Foo"));
    fs::create_symlink(folder.path("bin/bar"), folder.path("bin/link"));
    add("bar.desktop", entry("Bar", "Exec=" + folder.path("bin/link") + "\n"));

    EXPECT_EQ(ofProcess(folder.path("bin/foo"), {"foo"}), "foo");
    EXPECT_EQ(ofProcess(folder.path("bin/bar"), {"bar"}), "bar");
    EXPECT_EQ(catalogue->find("foo")->executable, folder.path("bin/foo"));
}

TEST_F(CatalogueExecution, EarlierFolderOfThePathWins)
{
    add("foo.desktop", entry("Foo"));
    folder.copyProgram("/bin/true", "local/bin/foo");

    EXPECT_EQ(ofProcess(folder.path("local/bin/foo"), {"foo"}), "foo");
    EXPECT_EQ(ofProcess(folder.path("bin/foo"), {"foo"}), "");
}

TEST_F(CatalogueExecution, ProgramThatIsInstalledLaterIsKnownByItsPlace)
{
    add("late.desktop", entry("Late", "Exec=late\n"));

    EXPECT_EQ(ofProcess(folder.path("bin/late"), {"late"}), "late");
    EXPECT_EQ(ofProcess("/usr/bin/dash", {"sh", folder.path("bin/late")}), "late");
}

TEST_F(CatalogueExecution, ScriptIsKnownByItsFileAndNotByItsInterpreter)
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

TEST_F(CatalogueExecution, ProgramIsFoundInTheFolderInWhichTheEntryIsExecuted)
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
    EXPECT_EQ(ofProcess("/usr/bin/python3.11", {"python3", "main.py", "--x"}, game), "script");
    EXPECT_EQ(ofProcess("/usr/bin/python3.11", {"python3", "main.py", "--x"}), "");
}

TEST_F(CatalogueExecution, RelativeProgramOfAnEntryWithoutAFolderIsNobodys)
{
    add("nowhere.desktop", entry("Nowhere", "Exec=./start\n"));
    add("relative.desktop", entry("Relative", "Exec=./start\nPath=game\n"));

    EXPECT_EQ(ofProcess(folder.path("game/start"), {"./start"}), "");
    EXPECT_TRUE(catalogue->find("relative")->keys.empty());
}

TEST_F(CatalogueExecution, EntryOfAnotherDesktopIsRecognisedAllTheSame)
{
    environment.desktops = {"KDE"};
    add("foo.desktop", entry("Foo", "Exec=foo\nOnlyShowIn=GNOME;\n"));

    EXPECT_EQ(ofProcess(folder.path("bin/foo"), {"foo"}), "foo");
    EXPECT_TRUE(shownIds().empty());
}

TEST_F(CatalogueExecution, ProgramBehindWrappersIsTheApplications)
{
    folder.copyProgram("/bin/true", "bin/java");
    add("jar.desktop", entry("Jar", "Exec=env A=b java -Xmx1g -jar /opt/tool.jar %F\n"));
    add("wrapped.desktop", entry("Wrapped", "Exec=sh -c \"exec nice foo --x\"\n"));

    EXPECT_EQ(ofProcess(folder.path("bin/java"), {"java", "-jar", "/opt/tool.jar"}), "jar");
    EXPECT_EQ(ofProcess(folder.path("bin/java"), {"java", "-jar", "/opt/other.jar"}), "");
    EXPECT_EQ(ofProcess(folder.path("bin/foo"), {"foo", "--x"}), "wrapped");
    EXPECT_EQ(ofProcess("/usr/bin/env", {"env"}), "");
}

TEST_F(CatalogueExecution, ScriptThatLaunchesOthersIsTheApplicationsOnlyWithItsArguments)
{
    folder.writeProgram("bin/xdg-open", "#!/bin/sh\n");
    folder.writeProgram("bin/wine-stable", "#!/bin/sh\n");
    fs::create_symlink(folder.path("bin/wine-stable"), folder.path("bin/wine"));
    add("link.desktop", entry("Link", "Exec=xdg-open https://example.org/\n"));
    add("windows.desktop", entry("Windows", "Exec=env A=b wine /home/u/a.exe %f\n"));
    add("wine.desktop", entry("Wine", "Exec=wine\n"));
    const std::string shell = fs::canonical("/bin/sh");
    const auto ofScript = [&](const std::string& name, const std::string& argument) {
        return ofProcess(shell, {"/bin/sh", folder.path("bin/" + name), argument});
    };

    EXPECT_EQ(ofScript("xdg-open", "https://example.org/"), "link");
    EXPECT_EQ(ofScript("xdg-open", "a.pdf"), "");
    EXPECT_EQ(ofScript("wine", "/home/u/a.exe"), "windows");
    EXPECT_EQ(ofScript("wine-stable", "/home/u/a.exe"), "windows");
    EXPECT_EQ(ofScript("wine", "/home/u/b.exe"), "");
}

TEST_F(CatalogueExecution, ShellThatDecidesWhatItStartsIsKnownByAllThatItWasTold)
{
    const std::string text = "if true; then foo; else bar; fi";
    add("shell.desktop", entry("Shell", "Exec=sh -c \"" + text + "\"\n"));
    const std::string shell = fs::canonical("/bin/sh");
    environment.programFolders.emplace_back("/bin");

    EXPECT_EQ(ofProcess(shell, {"sh", "-c", text}), "shell");
    EXPECT_EQ(ofProcess(shell, {"sh", "-c", "if true; then bar; fi"}), "");
}

TEST_F(CatalogueExecution, ProgramOfEitherOfTwoLinesIsTheApplications)
{
    add("twice.desktop", entry("Twice", "Exec=foo\nExec=missing\nExec=bar\n"));

    EXPECT_EQ(ofProcess(folder.path("bin/foo"), {"foo"}), "twice");
    EXPECT_EQ(ofProcess(folder.path("bin/bar"), {"bar"}), "twice");
    EXPECT_EQ(catalogue->find("twice")->executable, folder.path("bin/foo"));
}

TEST_F(CatalogueExecution, EntryForTerminalsNeverClaimsAProgram)
{
    add("foo.desktop", entry("Foo", "Exec=foo\nTerminal=true\n"));

    EXPECT_EQ(ofProcess(folder.path("bin/foo"), {"foo"}), "");
}

TEST_F(CatalogueExecution, ServiceWhoseNameIsAnIdIsTheApplication)
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

TEST_F(CatalogueExecution, LaunchersClaimDecidesBetweenEntriesOfOneProgram)
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

TEST_F(CatalogueExecution, ShownEntryWinsATie)
{
    add("a.desktop", entry("A", "Exec=foo\nNoDisplay=true\n"));
    add("b.desktop", entry("B"));

    EXPECT_EQ(ofProcess(folder.path("bin/foo"), {"foo"}), "b");
}
