#include "linux/xdg/IdentityTable.h"

#include <map>
#include <set>

#include <gtest/gtest.h>

namespace {

using Words = std::vector<std::string>;
using Kind = xdg::ExecutionKey::Kind;

/// A table whose applications have names, and a file system and claims that are set beforehand.
class IdentityTableTest : public testing::Test
{
protected:
    void addExecutable(const std::string& name, const std::string& path, Words fixed = {})
    {
        add(name, {Kind::Executable, path, std::move(fixed), false, ""});
    }

    void addScript(const std::string& name, const std::string& path, Words fixed = {})
    {
        add(name, {Kind::Script, path, std::move(fixed), false, ""});
    }

    void
    addShared(const std::string& name, const std::string& path, Words fixed, std::string as = "")
    {
        add(name, {Kind::Executable, path, std::move(fixed), true, std::move(as)});
    }

    void add(const std::string& name, xdg::ExecutionKey key)
    {
        const auto [place, added] = indices.emplace(name, names.size());
        if (added) {
            names.push_back(name);
        }
        table.add(place->second, {.preference = place->second}, std::move(key));
    }

    std::string find(const std::string& executable, Words arguments, std::string folder = "/home")
    {
        proc::ProcessFacts facts;
        facts.pid = 42;
        facts.executable = executable;
        facts.arguments = std::move(arguments);
        facts.workingDirectory = std::move(folder);
        const auto index = table.find(
            facts,
            {.realPath =
                 [this](const std::string& path) {
                     const auto link = links.find(path);
                     return link == links.end() ? path : link->second;
                 },
             .exists = [this](const std::string& path) { return files.contains(path); },
             .claims = [this](pid_t) -> std::vector<std::size_t> {
                 ++claimsRead;
                 return claim.empty() ? std::vector<std::size_t>() : std::vector{indices.at(claim)};
             }}
        );
        return index ? names[*index] : "";
    }

    xdg::IdentityTable table;
    std::map<std::string, std::string> links;
    std::set<std::string> files;
    std::string claim;
    int claimsRead = 0;

private:
    std::map<std::string, std::size_t> indices;
    Words names;
};

} // namespace

TEST_F(IdentityTableTest, ExecutableDecidesWhateverTheArguments)
{
    addExecutable("foo", "/usr/bin/foo");

    EXPECT_EQ(find("/usr/bin/foo", {"something else", "--x"}), "foo");
    EXPECT_EQ(find("/usr/bin/foo", {}), "foo");
    EXPECT_EQ(find("/usr/bin/bar", {"foo"}), "");
    EXPECT_EQ(find("/home/user/foo", {"/usr/bin/foo"}), "");
}

TEST_F(IdentityTableTest, NobodysProcessCostsNoLookAtItsClaim)
{
    addExecutable("foo", "/usr/bin/foo");

    find("/usr/bin/bar", {"bar"});
    find("/usr/bin/foo", {"foo"});

    EXPECT_EQ(claimsRead, 0);
}

TEST_F(IdentityTableTest, ScriptOfAnInterpreterDecides)
{
    addScript("meld", "/usr/bin/meld");

    EXPECT_EQ(find("/usr/bin/python3.11", {"/usr/bin/python3", "/usr/bin/meld", "a"}), "meld");
    EXPECT_EQ(find("/usr/bin/python3.11", {"python3", "-X", "dev", "-I", "/usr/bin/meld"}), "meld");
    EXPECT_EQ(find("/usr/bin/python3.11", {"python3", "other.py", "/usr/bin/meld"}), "");
    EXPECT_EQ(find("/usr/bin/python3.11", {"python3", "-c", "/usr/bin/meld"}), "");
    EXPECT_EQ(find("/usr/bin/python3.11", {"python3", "-m", "/usr/bin/meld"}), "");
    EXPECT_EQ(find("/usr/bin/python3.11", {"python3"}), "");
    EXPECT_EQ(find("/usr/bin/python3.11", {}), "");
}

TEST_F(IdentityTableTest, ScriptIsFoundRelativeToTheProcessesOwnFolder)
{
    addScript("foo", "/opt/foo/run.sh");

    EXPECT_EQ(find("/usr/bin/dash", {"sh", "run.sh"}, "/opt/foo"), "foo");
    EXPECT_EQ(find("/usr/bin/dash", {"sh", "../foo/./run.sh"}, "/opt/bar"), "foo");
    EXPECT_EQ(find("/usr/bin/dash", {"sh", "run.sh"}, "/opt/bar"), "");
}

TEST_F(IdentityTableTest, ScriptInTheOwnFolderGoesBeforeThatOfThePath)
{
    addScript("foo", "/usr/bin/foo");
    table.setSearchFolders({"/usr/bin"});

    EXPECT_EQ(find("/usr/bin/dash", {"sh", "foo"}), "foo");
    files.insert("/home/foo");
    EXPECT_EQ(find("/usr/bin/dash", {"sh", "foo"}), "");
}

TEST_F(IdentityTableTest, ScriptIsFoundBehindALink)
{
    addScript("foo", "/usr/share/foo/foo.py");
    links["/usr/bin/foo"] = "/usr/share/foo/foo.py";

    EXPECT_EQ(find("/usr/bin/python3", {"python3", "/usr/bin/foo"}), "foo");
}

TEST_F(IdentityTableTest, ScriptWhoseInterpreterIsNoneOfTheUsualOnes)
{
    addScript("foo", "/usr/bin/foo");
    EXPECT_EQ(find("/opt/odd", {"odd", "/usr/bin/foo"}), "");

    table.addInterpreter("/opt/odd");

    EXPECT_EQ(find("/opt/odd", {"odd", "/usr/bin/foo"}), "foo");
}

TEST_F(IdentityTableTest, TextGivenToAShellIsNoScript)
{
    addScript("foo", "/usr/bin/foo");

    EXPECT_EQ(find("/usr/bin/dash", {"sh", "-c", "/usr/bin/foo"}), "");
    EXPECT_EQ(find("/usr/bin/bash", {"bash", "-ec", "/usr/bin/foo"}), "");
    EXPECT_EQ(find("/usr/bin/bash", {"bash", "--norc", "/usr/bin/foo"}), "foo");
    EXPECT_EQ(find("/usr/bin/bash", {"bash", "-o", "pipefail", "/usr/bin/foo"}), "foo");
}

TEST_F(IdentityTableTest, ArchiveOfJavaDecides)
{
    addScript("tool", "/opt/tool.jar");

    EXPECT_EQ(find("/usr/lib/jvm/bin/java", {"java", "-Xmx1g", "-jar", "/opt/tool.jar"}), "tool");
    EXPECT_EQ(find("/usr/lib/jvm/bin/java", {"java", "-cp", "/opt/tool.jar", "Main"}), "");
}

TEST_F(IdentityTableTest, LoaderIsLookedThrough)
{
    addExecutable("foo", "/usr/bin/foo");
    const std::string loader = "/usr/lib/x86_64-linux-gnu/ld-linux-x86-64.so.2";

    EXPECT_EQ(find(loader, {"/lib64/ld-linux-x86-64.so.2", "/usr/bin/foo", "x"}), "foo");
    EXPECT_EQ(find(loader, {"ld.so", "--library-path", "/opt", "/usr/bin/foo"}), "foo");
    EXPECT_EQ(find(loader, {"ld.so", "--argv0", "/usr/bin/foo", "/usr/bin/bar"}), "");
}

TEST_F(IdentityTableTest, MostFixedArgumentsPresentWins)
{
    addExecutable("thunar", "/usr/bin/thunar");
    addExecutable("rename", "/usr/bin/thunar", {"--bulk-rename"});

    EXPECT_EQ(find("/usr/bin/thunar", {"thunar"}), "thunar");
    EXPECT_EQ(find("/usr/bin/thunar", {"thunar", "--bulk-rename", "x"}), "rename");
    EXPECT_EQ(find("/usr/bin/thunar", {"thunar", "/home"}), "thunar");
}

TEST_F(IdentityTableTest, ApplicationIsKnownWithoutItsFixedArguments)
{
    addExecutable("foo", "/usr/bin/foo", {"--gui"});

    EXPECT_EQ(find("/usr/bin/foo", {"foo"}), "foo");
}

TEST_F(IdentityTableTest, SharedProgramNeedsAllOfItsArguments)
{
    addShared("calc", "/usr/bin/flatpak", {"run", "org.calc"});
    addShared("maps", "/usr/bin/flatpak", {"run", "org.maps"});

    EXPECT_EQ(find("/usr/bin/flatpak", {"flatpak", "run", "--branch=x", "org.maps"}), "maps");
    EXPECT_EQ(find("/usr/bin/flatpak", {"flatpak", "run", "org.other"}), "");
    EXPECT_EQ(find("/usr/bin/flatpak", {"flatpak", "update"}), "");
}

TEST_F(IdentityTableTest, SharedProgramIsKnownByTheNameItWasCalledBy)
{
    addShared("firefox", "/usr/bin/snap", {}, "firefox");

    EXPECT_EQ(find("/usr/bin/snap", {"/snap/bin/firefox", "x"}), "firefox");
    EXPECT_EQ(find("/usr/bin/snap", {"snap", "list"}), "");
}

TEST_F(IdentityTableTest, ClaimDecidesBetweenEqualsOnly)
{
    addExecutable("one", "/usr/bin/foo");
    addExecutable("two", "/usr/bin/foo");
    addExecutable("other", "/usr/bin/other");

    EXPECT_EQ(find("/usr/bin/foo", {"foo"}), "one");
    claim = "two";
    EXPECT_EQ(find("/usr/bin/foo", {"foo"}), "two");
    claim = "other";
    EXPECT_EQ(find("/usr/bin/foo", {"foo"}), "one");
    EXPECT_EQ(find("/usr/bin/nobody", {"nobody"}), "");
}

TEST_F(IdentityTableTest, SeveralKeysOfOneApplicationAreNoTie)
{
    addExecutable("foo", "/usr/bin/foo");
    addExecutable("foo", "/usr/bin/foo", {"--service"});

    EXPECT_EQ(find("/usr/bin/foo", {"foo", "--service"}), "foo");
    EXPECT_EQ(claimsRead, 0);
}
