// Which application a process is: one row a case, facts in, an id out. The entries are those of
// real desktops; no process and no file is needed.
#include "RecognitionDesktop.h"

#include <algorithm>
#include <map>
#include <ostream>

#include <gtest/gtest.h>

using namespace xdg_tests;

namespace {

struct Case
{
    std::string name;
    std::string executable;
    Words arguments;
    std::string expected; // empty: nobody
    Words claims{};       // of launchers and control groups
    Words chosen{};
    std::string folder = "/home/u";
};

void PrintTo(const Case& row, std::ostream* out) // NOLINT(readability-identifier-naming)
{
    *out << row.name;
}

class Recognition : public testing::TestWithParam<Case>
{
};

std::string recognised(const Case& row)
{
    xdg::Catalogue::Parts parts;
    for (const Entry& entry : desktopEntries()) {
        xdg::InstalledApplication application;
        application.entry.id = entry.id;
        application.entry.path = "/usr/share/applications/" + entry.id + ".desktop";
        application.entry.homemade = entry.homemade;
        application.shown = entry.shown;
        application.keys = entry.keys;
        application.chosen =
            std::find(row.chosen.begin(), row.chosen.end(), entry.id) != row.chosen.end();
        parts.applications.push_back(std::move(application));
    }
    parts.interpreters = {"/opt/odd/runner", PYTHON, DASH};
    parts.searchFolders = {"/usr/local/bin", "/usr/bin"};
    const xdg::Catalogue catalogue(std::move(parts), [](const auto&, const auto&) { return 0U; });
    proc::ProcessFacts facts;
    facts.pid = 42;
    facts.executable = row.executable;
    facts.arguments = row.arguments;
    facts.workingDirectory = row.folder;
    const auto* found = catalogue.ofProcess(facts, [&](pid_t) { return row.claims; });
    // What is nobody's at the first look must be so at the second.
    EXPECT_TRUE(found == nullptr || catalogue.mayBeExecutedBy(row.executable));
    return found == nullptr ? "" : found->entry.id;
}

std::string pathOf(const std::string& id)
{
    return "/usr/share/applications/" + id + ".desktop";
}

} // namespace

TEST_P(Recognition, GivesTheApplication)
{
    EXPECT_EQ(recognised(GetParam()), GetParam().expected);
}

const auto NAME_OF = [](const auto& info) { return info.param.name; };

INSTANTIATE_TEST_SUITE_P(
    Executable,
    Recognition,
    testing::Values(
        Case{"Plain", "/usr/bin/galculator", {"galculator"}, "galculator"},
        Case{"UnderAnotherName", "/usr/bin/galculator", {"innocent"}, "galculator"},
        Case{"WithoutArguments", "/usr/bin/galculator", {}, "galculator"},
        Case{"WithADocument", "/usr/bin/evince", {"evince", "/home/u/a.pdf"}, "org.gnome.Evince"},
        Case{"OfNobody", "/usr/bin/make", {"make"}, ""},
        Case{"NamedLikeAnApplication", "/home/u/galculator", {"/usr/bin/galculator"}, ""},
        Case{"Copy", "/tmp/galculator", {"galculator"}, ""},
        Case{"BesideAnApplication", "/usr/lib/firefox-esr/plugin-container", {"x"}, ""},
        Case{"OfTheService", "/usr/libexec/gnome-terminal-server", {"x"}, "org.gnome.Terminal"},
        Case{
            "OfTheServiceStartedByTheBus",
            "/usr/bin/gnome-calculator",
            {"gnome-calculator", "--gapplication-service"},
            "org.gnome.Calculator"},
        Case{
            "SearchProviderIsNoApplication",
            "/usr/libexec/gnome-calculator-search-provider",
            {"x"},
            ""},
        Case{
            "ChildOfABrowser",
            "/usr/lib/firefox-esr/firefox-esr",
            {"firefox-esr", "-contentproc"},
            "firefox-esr"}
    ),
    NAME_OF
);

INSTANTIATE_TEST_SUITE_P(
    Script,
    Recognition,
    testing::Values(
        Case{"OfPython", PYTHON, {"/usr/bin/python3", "/usr/bin/meld", "a", "b"}, "org.gnome.Meld"},
        Case{"OfPythonWithOptions", PYTHON, {"python3", "-I", "/usr/bin/meld"}, "org.gnome.Meld"},
        Case{
            "OfPythonWithValues",
            PYTHON,
            {"python3", "-X", "dev", "-W", "error", "/usr/bin/meld"},
            "org.gnome.Meld"},
        Case{
            "OfPythonWithAValueThatEndsLikeAnOption",
            PYTHON,
            {"python3", "-Xpycache_prefix=/tmp/c", "/usr/bin/meld"},
            "org.gnome.Meld"},
        Case{
            "OfPythonWithJoinedOptions",
            PYTHON,
            {"python3", "-IX", "dev", "/usr/bin/meld"},
            "org.gnome.Meld"},
        Case{"TextForPythonWithLetters", PYTHON, {"python3", "-Ic", "/usr/bin/meld"}, ""},
        Case{"ArgumentOfAnotherScript", PYTHON, {"python3", "x.py", "/usr/bin/meld"}, ""},
        Case{"InteractivePython", PYTHON, {"python3"}, ""},
        Case{"TextForPython", PYTHON, {"python3", "-c", "/usr/bin/meld"}, ""},
        Case{"ModuleForPython", PYTHON, {"python3", "-m", "/usr/bin/meld"}, ""},
        Case{"OfAShell", DASH, {"/bin/sh", "/usr/bin/uxterm"}, "debian-uxterm"},
        Case{
            "OfAShellWithOptions",
            BASH,
            {"bash", "--norc", "-o", "pipefail", "/usr/bin/uxterm"},
            "debian-uxterm"},
        Case{
            "OfAShellWithJoinedOptions",
            BASH,
            {"bash", "-euo", "pipefail", "/usr/bin/uxterm"},
            "debian-uxterm"},
        Case{"OfAShellWithoutAnOption", BASH, {"bash", "+x", "/usr/bin/uxterm"}, "debian-uxterm"},
        Case{
            "OfAShellWithoutANamedOption",
            BASH,
            {"bash", "+o", "posix", "/usr/bin/uxterm"},
            "debian-uxterm"},
        Case{
            "OfAShellInABox",
            "/usr/bin/busybox",
            {"busybox", "sh", "-e", "/usr/bin/uxterm"},
            "debian-uxterm"},
        Case{
            "OfAnotherShellInABox",
            "/usr/bin/busybox",
            {"busybox", "ash", "/usr/bin/uxterm"},
            "debian-uxterm"},
        Case{"OfABoxThatIsAShell", "/usr/bin/busybox", {"sh", "/usr/bin/uxterm"}, "debian-uxterm"},
        Case{"TextForAShellInABox", "/usr/bin/busybox", {"busybox", "sh", "-c", "uxterm"}, ""},
        Case{"EditedInABox", "/usr/bin/busybox", {"busybox", "vi", "/usr/bin/uxterm"}, ""},
        Case{"NothingForABox", "/usr/bin/busybox", {"busybox"}, ""},
        Case{"TextForAShell", DASH, {"sh", "-c", "/usr/bin/uxterm"}, ""},
        Case{"TextForAShellWithLetters", BASH, {"bash", "-ec", "/usr/bin/uxterm"}, ""},
        Case{
            "InTheFolderOfTheProcess", DASH, {"sh", "uxterm"}, "debian-uxterm", {}, {}, "/usr/bin"},
        Case{
            "RelativeToTheFolderOfTheProcess",
            DASH,
            {"sh", "../bin/./uxterm"},
            "debian-uxterm",
            {},
            {},
            "/usr/lib"},
        Case{"ThatTheShellFindsInThePath", BASH, {"bash", "uxterm"}, "debian-uxterm"},
        Case{"OfPythonIsNotLookedForInThePath", PYTHON, {"python3", "meld"}, ""},
        Case{"OfTheSameNameElsewhere", BASH, {"bash", "./uxterm"}, ""},
        Case{
            "OfGjs",
            "/usr/bin/gjs-console",
            {"/usr/bin/gjs", "/usr/share/org.gnome.Characters/org.gnome.Characters"},
            "org.gnome.Characters"},
        Case{
            "OfAnOddInterpreter", "/opt/odd/runner", {"runner", "/usr/bin/meld"}, "org.gnome.Meld"},
        Case{"OfAnUnknownInterpreter", "/opt/unknown", {"unknown", "/usr/bin/meld"}, ""},
        Case{"ArchiveOfJava", JAVA, {"java", "-Xmx1g", "-jar", "/opt/tool/tool.jar"}, "jar-tool"},
        Case{
            "ArchiveOfJavaWithValues",
            JAVA,
            {"java",
             "--add-opens",
             "java.base/java.lang=ALL-UNNAMED",
             "-jar",
             "/opt/tool/tool.jar"},
            "jar-tool"},
        Case{"ClassPathOfJava", JAVA, {"java", "-cp", "/opt/tool/tool.jar", "Main"}, ""},
        Case{"OnItsWayThroughEnv", "/usr/bin/env", {"env", "python3", "/usr/bin/meld"}, ""}
    ),
    NAME_OF
);

INSTANTIATE_TEST_SUITE_P(
    Loader,
    Recognition,
    testing::Values(
        Case{"Plain", LOADER, {"/lib64/ld-linux-x86-64.so.2", "/usr/bin/xterm"}, "debian-xterm"},
        Case{
            "WithALibraryPath",
            LOADER,
            {"ld.so", "--library-path", "/opt/lib", "/usr/bin/xterm", "-e", "x"},
            "debian-xterm"},
        Case{
            "WithAnAudit",
            LOADER,
            {"ld.so", "--audit", "x.so", "--glibc-hwcaps-mask", "x86-64-v2", "/usr/bin/xterm"},
            "debian-xterm"},
        Case{"WithAFalseName", LOADER, {"ld.so", "--argv0", "/usr/bin/xterm", "/usr/bin/make"}, ""},
        Case{
            "InTheFolderOfTheProcess",
            LOADER,
            {"ld.so", "./xterm"},
            "debian-xterm",
            {},
            {},
            "/usr/bin"},
        Case{"OfAnInterpreter", LOADER, {"ld.so", PYTHON, "/usr/bin/meld"}, "org.gnome.Meld"},
        Case{"OfItself", LOADER, {"ld.so", LOADER, LOADER}, ""},
        Case{"OfNothing", LOADER, {"ld.so"}, ""}
    ),
    NAME_OF
);

INSTANTIATE_TEST_SUITE_P(
    Arguments,
    Recognition,
    testing::Values(
        Case{"DiscriminateOfficePrograms", DASH, {"sh", SOFFICE, "--calc"}, "libreoffice-calc"},
        Case{"DiscriminateTheOther", DASH, {"sh", SOFFICE, "--writer", "x"}, "libreoffice-writer"},
        Case{"MissingMeanTheOneWithout", DASH, {"sh", SOFFICE}, "libreoffice-startcenter"},
        Case{
            "BehindOtherOptions",
            DASH,
            {"sh", SOFFICE, "--norestore", "--calc"},
            "libreoffice-calc"},
        Case{
            "OfAnActionOfTheEntry",
            "/usr/bin/thunar",
            {"thunar", "--bulk-rename"},
            "thunar-bulk-rename"},
        Case{"OutOfOrderAreNotThere", "/usr/bin/xterm", {"xterm", "work", "-T"}, "debian-xterm"},
        Case{
            "NeededByALauncher",
            "/usr/bin/flatpak",
            {"flatpak", "run", "org.videolan.VLC"},
            "org.videolan.VLC"},
        Case{
            "OfALauncherAmongOptions",
            "/usr/bin/flatpak",
            {"flatpak", "run", "--branch=stable", "--command=x", "org.videolan.VLC", "@@u"},
            "org.videolan.VLC"},
        Case{"OfALauncherForAnother", "/usr/bin/flatpak", {"flatpak", "run", "org.other"}, ""},
        Case{"OfALauncherThatUpdates", "/usr/bin/flatpak", {"flatpak", "update"}, ""},
        Case{"NameOfASnap", "/usr/bin/snap", {"/snap/bin/firefox"}, "firefox_firefox"},
        Case{"SnapItself", "/usr/bin/snap", {"snap", "list"}, ""},
        Case{"OfWine", DASH, {"sh", "/usr/bin/wine-stable", "/home/u/pdf.exe"}, "pdf-from-wine"},
        Case{"OfWineForAnother", DASH, {"sh", "/usr/bin/wine-stable", "/home/u/other.exe"}, ""}
    ),
    NAME_OF
);

INSTANTIATE_TEST_SUITE_P(
    Claim,
    Recognition,
    testing::Values(
        Case{"NoneTakesTheFirst", "/usr/bin/twin", {"twin"}, "twin-a"},
        Case{"BreaksATie", "/usr/bin/twin", {"twin"}, "twin-b", {pathOf("twin-b")}},
        Case{"OfTheControlGroupBreaksATie", "/usr/bin/twin", {"twin"}, "twin-b", {"twin-b"}},
        Case{"BetterOneCounts", "/usr/bin/twin", {"twin"}, "twin-b", {"twin-b", "twin-a"}},
        Case{
            "OfSomethingElseIsPassedOver",
            "/usr/bin/twin",
            {"twin"},
            "twin-b",
            {pathOf("galculator"), "twin-b"}},
        Case{
            "NeverOverridesTheExecutable",
            "/usr/bin/galculator",
            {"galculator"},
            "galculator",
            {pathOf("twin-b")}},
        Case{"MakesNobodyAnApplication", "/usr/bin/make", {"make"}, "", {pathOf("twin-b")}},
        Case{
            "NeverOverridesArguments",
            "/usr/bin/thunar",
            {"thunar"},
            "thunar",
            {pathOf("thunar-bulk-rename")}},
        Case{
            "ShownOneIsPreferred",
            "/usr/bin/gnome-system-monitor",
            {"gnome-system-monitor"},
            "gnome-system-monitor"}
    ),
    NAME_OF
);

INSTANTIATE_TEST_SUITE_P(
    Chosen,
    Recognition,
    testing::Values(
        Case{"WinsATie", "/usr/bin/twin", {"twin"}, "twin-b", {}, {"twin-b"}},
        Case{
            "WinsATieAgainstAForgedClaim",
            "/usr/bin/twin",
            {"twin"},
            "twin-b",
            {pathOf("twin-a")},
            {"twin-b"}},
        Case{
            "IsNotHiddenByAHomemadeEntry",
            "/usr/bin/keepassxc",
            {"keepassxc", "--minimized"},
            "org.keepassxc.KeePassXC",
            {pathOf("zz-hides-keepassxc")},
            {"org.keepassxc.KeePassXC"}},
        Case{
            "HomemadeEntryOfWhatIsNotChosenCounts",
            "/usr/bin/xterm",
            {"xterm", "-T", "work"},
            "zz-own-profile"},
        Case{
            "HomemadeEntryCanBeChosenItself",
            "/usr/bin/xterm",
            {"xterm", "-T", "work"},
            "zz-own-profile",
            {},
            {"debian-xterm", "zz-own-profile"}},
        Case{
            "HomemadeEntryNeedsItsArguments",
            "/usr/bin/xterm",
            {"xterm"},
            "debian-xterm",
            {},
            {"zz-own-profile"}},
        Case{
            "DoesNotTakeItsSiblingsStarts",
            DASH,
            {"sh", SOFFICE, "--writer"},
            "libreoffice-writer",
            {},
            {"libreoffice-calc"}},
        Case{
            "DoesNotTakeStartsWithoutItsArguments",
            DASH,
            {"sh", SOFFICE},
            "libreoffice-startcenter",
            {},
            {"libreoffice-calc"}}
    ),
    NAME_OF
);

INSTANTIATE_TEST_SUITE_P(
    Closed,
    Recognition,
    testing::Values(
        Case{"ProcessIsKnownByItsName", "", {"keepassxc"}, "org.keepassxc.KeePassXC"},
        Case{"ProcessIsKnownByItsPath", "", {"/usr/bin/keepassxc", "x"}, "org.keepassxc.KeePassXC"},
        Case{
            "ProcessIsKnownByANameWithAnotherFolder",
            "",
            {"./keepassxc"},
            "org.keepassxc.KeePassXC"},
        Case{"ProcessOfNobody", "", {"ssh-agent"}, ""},
        Case{"ProcessWithoutAName", "", {}, ""},
        Case{"ProcessWithAnEmptyName", "", {""}, ""}
    ),
    NAME_OF
);
