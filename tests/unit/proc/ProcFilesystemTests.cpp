#include "desktop/TemporaryFolder.h"
#include "linux/proc/ProcFilesystem.h"
#include "processes/DescriptorLimit.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace {

/// A folder that looks like /proc.
class ProcFilesystemTest : public testing::Test
{
protected:
    void addProcess(
        pid_t pid,
        pid_t parent,
        const std::string& executable,
        const std::string& line,
        const std::string& flags = "9"
    )
    {
        const std::string name = std::to_string(pid);
        folder.write(
            name + "/stat",
            name + " (odd ) name) S " + std::to_string(parent) + " 5 6 34816 8 " + flags +
                " 10 11 12 13 14 15 16 17 18 19 20 0 4711 22 23\n"
        );
        folder.write(name + "/cmdline", line);
        folder.write(name + "/environ", "");
        std::filesystem::create_symlink(executable, folder.path(name + "/exe"));
        std::filesystem::create_symlink("/home/user", folder.path(name + "/cwd"));
    }

    desktop::TemporaryFolder folder;
    proc::ProcFilesystem filesystem{::getuid(), folder.path()};
};

using namespace std::string_literals;

} // namespace

TEST_F(ProcFilesystemTest, FactsAreReadFromTheFiles)
{
    addProcess(42, 7, "/usr/bin/foo", "foo\0--bar\0\0last\0"s);

    const auto facts = filesystem.facts(42);

    ASSERT_TRUE(facts.has_value());
    EXPECT_EQ(facts->pid, 42);
    EXPECT_EQ(facts->parent, 7);
    EXPECT_EQ(facts->terminal, 34816);
    EXPECT_FALSE(facts->isFork);
    EXPECT_EQ(facts->startTime, 4711U);
    EXPECT_EQ(facts->executable, "/usr/bin/foo");
    EXPECT_EQ(facts->arguments, (std::vector<std::string>{"foo", "--bar", "", "last"}));
    EXPECT_EQ(facts->workingDirectory, "/home/user");
}

TEST_F(ProcFilesystemTest, ForkThatHasExecutedNothingIsToldApart)
{
    constexpr auto* FORKED = "64";
    addProcess(42, 7, "/usr/bin/foo", "foo\0"s, FORKED);

    EXPECT_TRUE(filesystem.facts(42)->isFork);
}

TEST_F(ProcFilesystemTest, ExecutableThatWasReplacedKeepsItsPath)
{
    addProcess(42, 7, "/usr/bin/foo (deleted)", "foo\0"s);

    EXPECT_EQ(filesystem.facts(42)->executable, "/usr/bin/foo");
    EXPECT_EQ(filesystem.executable(42), "/usr/bin/foo");
}

TEST_F(ProcFilesystemTest, ProcessWithoutArgumentsIsExecutingSomethingElse)
{
    addProcess(42, 7, "/usr/bin/foo", "");

    EXPECT_FALSE(filesystem.facts(42).has_value());
}

TEST_F(ProcFilesystemTest, ProcessOfSomebodyElseIsNotSeen)
{
    addProcess(42, 7, "/usr/bin/foo", "foo\0"s);
    const proc::ProcFilesystem other(::getuid() + 1, folder.path());

    EXPECT_FALSE(other.facts(42).has_value());
    EXPECT_TRUE(other.processes().empty());
    EXPECT_EQ(filesystem.processes(), std::vector<pid_t>{42});
}

TEST_F(ProcFilesystemTest, MissingOrDamagedFilesGiveNothing)
{
    addProcess(42, 7, "/usr/bin/foo", "foo\0"s);
    folder.write("42/stat", "42 (foo) S x");
    folder.write("43/cmdline", "foo");
    folder.write("not-a-number/stat", "");

    EXPECT_FALSE(filesystem.facts(42).has_value());
    EXPECT_FALSE(filesystem.facts(43).has_value());
    EXPECT_FALSE(filesystem.facts(44).has_value());
    EXPECT_TRUE(filesystem.allFacts().empty());
}

TEST_F(ProcFilesystemTest, AncestorsEndBeforeTheFirstProcess)
{
    addProcess(42, 7, "/usr/bin/foo", "foo\0"s);
    addProcess(7, 3, "/usr/bin/foo", "foo\0"s);
    addProcess(3, 1, "/usr/bin/foo", "foo\0"s);
    addProcess(1, 0, "/usr/bin/init", "init\0"s);

    EXPECT_EQ(filesystem.ancestors(42), (std::vector<pid_t>{7, 3}));
}

TEST_F(ProcFilesystemTest, TreeThatRunsInACircleEnds)
{
    addProcess(42, 43, "/usr/bin/foo", "foo\0"s);
    addProcess(43, 42, "/usr/bin/foo", "foo\0"s);

    EXPECT_LE(filesystem.ancestors(42).size(), 256U);
}

TEST_F(ProcFilesystemTest, LaunchClaimCountsForTheProcessItWasWrittenForOnly)
{
    addProcess(42, 7, "/usr/bin/foo", "foo\0"s);
    const std::string claim = "GIO_LAUNCHED_DESKTOP_FILE=/usr/share/applications/foo.desktop\0"s;

    folder.write("42/environ", "A=b\0"s + claim + "GIO_LAUNCHED_DESKTOP_FILE_PID=42\0"s);
    EXPECT_EQ(filesystem.environment(42).launchedEntry, "/usr/share/applications/foo.desktop");

    folder.write("42/environ", claim + "GIO_LAUNCHED_DESKTOP_FILE_PID=41\0"s);
    EXPECT_FALSE(filesystem.environment(42).launchedEntry.has_value());

    folder.write("42/environ", claim);
    EXPECT_FALSE(filesystem.environment(42).launchedEntry.has_value());
}

TEST_F(ProcFilesystemTest, AliveMeansTheSameProcess)
{
    addProcess(42, 7, "/usr/bin/foo", "foo\0"s);

    EXPECT_TRUE(filesystem.alive(42, 4711));
    EXPECT_FALSE(filesystem.alive(42, 4712));
    EXPECT_FALSE(filesystem.alive(43, 4711));
}

TEST_F(ProcFilesystemTest, ProcessWhoseFirstThreadEndedLivesAsLongAsAnotherOne)
{
    const auto write = [this](const std::string& thread, const std::string& lines) {
        folder.write("42/task/" + thread + "/status", "Name:\tfoo\n" + lines);
    };
    addProcess(42, 7, "/usr/bin/foo", "");
    folder.write(
        "42/stat", "42 (foo) Z 7 5 6 34816 8 9 10 11 12 13 14 15 16 17 18 19 20 0 4711 22\n"
    );
    write("42", "State:\tZ (zombie)\nSigPnd:\t0000000000000000\n");
    EXPECT_FALSE(filesystem.alive(42, 4711));

    write("43", "State:\tS (sleeping)\nSigPnd:\t0000000000000000\n");
    EXPECT_TRUE(filesystem.alive(42, 4711));

    write("43", "State:\tS (sleeping)\nSigPnd:\t0000000000000100\n");
    EXPECT_FALSE(filesystem.alive(42, 4711)) << "the whole process was ended";
}

TEST(ProcFilesystem, KnowsThisProcess)
{
    const proc::ProcFilesystem filesystem;

    const auto facts = filesystem.facts(::getpid());

    ASSERT_TRUE(facts.has_value());
    EXPECT_EQ(facts->executable, std::filesystem::canonical("/proc/self/exe"));
    EXPECT_EQ(facts->workingDirectory, std::filesystem::current_path());
    EXPECT_EQ(facts->parent, ::getppid());
    EXPECT_TRUE(filesystem.alive(::getpid(), facts->startTime));
}

TEST_F(ProcFilesystemTest, WantOfDescriptorsIsToldAndAProcessThatIsGoneIsNot)
{
    addProcess(42, 7, "/usr/bin/foo", "foo\0"s);
    int told = 0;
    filesystem.onExhausted = [&told] { ++told; };
    EXPECT_FALSE(filesystem.facts(43));
    EXPECT_EQ(told, 0);
    {
        const processes::DescriptorLimit none(0);
        EXPECT_FALSE(filesystem.facts(42));
    }

    EXPECT_EQ(told, 1);
    EXPECT_TRUE(filesystem.facts(42));
}
