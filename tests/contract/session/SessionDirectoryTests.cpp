#include "desktop/TemporaryFolder.h"
#include "linux/session/SessionDirectory.h"
#include "processes/Environment.h"

#include <filesystem>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr auto NAME = "com.quorvent.Tarvel";
constexpr uid_t NOBODY = 65534;

class SessionDirectory : public testing::Test
{
protected:
    std::string openedPath()
    {
        const descriptors::FileDescriptor directory = session::openSessionDirectory(problem);
        return directory.isOpen()
                   ? std::filesystem::canonical(session::pathIn(directory, ".")).string()
                   : "";
    }

    std::string own() const { return (runtime.path() / NAME).string(); }

    static std::string fallback()
    {
        return std::string("/tmp/") + NAME + "-" + std::to_string(::geteuid());
    }

    const desktop::TemporaryFolder runtime;
    const processes::EnvironmentVariable runtimeVariable{"XDG_RUNTIME_DIR", runtime.path()};
    std::string problem;
};

} // namespace

TEST_F(SessionDirectory, IsMadeForThisUserOnlyInTheRuntimeFolder)
{
    EXPECT_EQ(openedPath(), own());

    struct stat facts = {};
    ASSERT_EQ(::stat(own().c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 0777U, 0700U);
    EXPECT_EQ(problem, "");
}

TEST_F(SessionDirectory, IsInTmpWithoutARuntimeFolder)
{
    runtimeVariable.set(std::nullopt);
    EXPECT_EQ(openedPath(), fallback());

    runtimeVariable.set("relative");
    EXPECT_EQ(openedPath(), fallback());

    runtimeVariable.set("/nowhere/at/all");
    EXPECT_EQ(openedPath(), fallback());
}

TEST_F(SessionDirectory, ThatOthersCanEnterIsNotUsed)
{
    ASSERT_EQ(::mkdir(own().c_str(), 0700), 0);
    ASSERT_EQ(::chmod(own().c_str(), 0750), 0);

    EXPECT_EQ(openedPath(), fallback());
    EXPECT_NE(problem.find("not a private folder"), std::string::npos) << problem;
}

TEST_F(SessionDirectory, ThatIsALinkIsNotUsed)
{
    const desktop::TemporaryFolder elsewhere;
    std::filesystem::create_directory_symlink(elsewhere.path(), own());

    EXPECT_EQ(openedPath(), fallback());
}

TEST_F(SessionDirectory, InARuntimeFolderOfSomebodyElseIsNotUsed)
{
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only root can give a folder away";
    }
    ASSERT_EQ(::chown(runtime.path().c_str(), NOBODY, NOBODY), 0);

    EXPECT_EQ(openedPath(), fallback());
}

TEST_F(SessionDirectory, OfSomebodyElseIsNotUsed)
{
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only root can give a folder away";
    }
    ASSERT_EQ(::mkdir(own().c_str(), 0700), 0);
    ASSERT_EQ(::chown(own().c_str(), NOBODY, NOBODY), 0);

    EXPECT_EQ(openedPath(), fallback());
}
