// Files that are damaged, cannot be written, or were made to harm.

#include "desktop/HeldFile.h"
#include "desktop/TemporaryFolder.h"
#include "session/agent/AgentTest.h"

#include <filesystem>
#include <string>

namespace agent {

namespace fs = std::filesystem;

class Files : public AgentTest
{
protected:
    void SetUp() override { open(); }

    [[nodiscard]] fs::path defaults() const
    {
        return session->desk.home() / ".config/com.quorvent.Tarvel/defaults.json";
    }

    /// Whether this content is kept in another file beside the defaults.
    [[nodiscard]] bool keptBeside(const std::string& content) const
    {
        for (const auto& entry : fs::directory_iterator(defaults().parent_path())) {
            if (entry.path() != defaults() && desktop::readFile(entry.path()) == content) {
                return true;
            }
        }
        return false;
    }

    void locksWith(const std::string& content)
    {
        desktop::writeFile(defaults(), content);
        watchHere({TERMINAL});
        const Recorder xterm(session->desk);
        EXPECT_TRUE(session->waitForCover());
        EXPECT_TRUE(opensWithThePassword());
        EXPECT_TRUE(keptBeside(content));
    }
};

TEST_F(Files, DefaultsThatMakeNoSenseAreKeptAndReadAsAbsent)
{
    locksWith("\x01\xff not at all {{{");
}

TEST_F(Files, DefaultsThatWereCutOffAreKeptAndReadAsAbsent)
{
    locksWith(R"({"cbaal": "debian-xt)");
}

TEST_F(Files, DefaultsThatCannotBeWrittenDoNotHinderALock)
{
    desktop::writeFile(defaults().parent_path(), "a file where the folder should be");
    watchHere({TERMINAL});
    const Recorder xterm(session->desk);

    EXPECT_TRUE(session->waitForCover());
    EXPECT_TRUE(opensWithThePassword());
    EXPECT_TRUE(desktop::waitUntil(
        [&] { return session->errors().find("cannot be written") != std::string::npos; }, PATIENCE
    )) << session->errors();
}

TEST_F(Files, DefaultsOnADiskThatDoesNotAnswerHoldNoCoverBack)
{
    desktop::writeFile(defaults(), "{}");
    watchHere({TERMINAL});
    {
        const desktop::HeldFile held(defaults());
        const Recorder xterm(session->desk);

        EXPECT_TRUE(session->waitForCover());
        EXPECT_TRUE(opensWithThePassword());
    }
    EXPECT_TRUE(session->process().isRunning());
}

TEST_F(Files, BrokenDesktopEntriesAreSkipped)
{
    const auto folder = session->desk.home() / ".local/share/applications";
    addEntry("latin", "[Desktop Entry]\nType=Application\nName=\xe9t\xe9\xff\nExec=xterm\n");
    addEntry(
        "endless",
        "[Desktop Entry]\nType=Application\nName=Endless\nExec=" + std::string(1 << 20, 'x') + "\n"
    );
    addEntry("headless", "Exec=xterm\n=\n[\n[]\n");
    fs::create_symlink("b.desktop", folder / "a.desktop");
    fs::create_symlink("a.desktop", folder / "b.desktop");
    fs::create_directory_symlink(".", folder / "loop");
    fs::create_directory(folder / "closed");
    fs::permissions(folder / "closed", fs::perms::none);

    watchHere({TERMINAL});
    const Recorder xterm(session->desk);

    EXPECT_TRUE(session->waitForLine("Will start: XTerm"));
    EXPECT_TRUE(session->waitForCover());
    EXPECT_TRUE(opensWithThePassword());
}

} // namespace agent
