// What no exec announces, what was done to entries since an application was chosen, and what is
// left alone.
#include "desktop/TemporaryFolder.h"
#include "session/agent/AgentTest.h"

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <utility>

namespace agent {

namespace {

constexpr auto EDITOR = "org.xfce.mousepad";
constexpr auto CALCULATOR = "galculator";
constexpr auto SPREADSHEET = "ID;PWXL;N;E\nC;Y1;X1;K1\nE\n"; // opens without any question

/// As launchers say what they are about to start.
void announce(desktop::XConnection& connection, const std::string& message)
{
    const xcb_window_t launcher = xcb_generate_id(connection.get());
    xcb_create_window(
        connection.get(),
        XCB_COPY_FROM_PARENT,
        launcher,
        connection.root(),
        -1,
        -1,
        1,
        1,
        0,
        XCB_WINDOW_CLASS_INPUT_ONLY,
        XCB_COPY_FROM_PARENT,
        0,
        nullptr
    );
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 8;
    event.window = launcher;
    event.type = connection.atom("_NET_STARTUP_INFO_BEGIN");
    std::string rest = message + '\0';
    while (!rest.empty()) {
        constexpr std::size_t PIECE = sizeof event.data.data8;
        std::fill(std::begin(event.data.data8), std::end(event.data.data8), 0);
        std::copy_n(rest.begin(), std::min(PIECE, rest.size()), std::begin(event.data.data8));
        rest.erase(0, PIECE);
        xcb_send_event(
            connection.get(),
            0,
            connection.root(),
            XCB_EVENT_MASK_PROPERTY_CHANGE,
            static_cast<const char*>(static_cast<const void*>(&event))
        );
        event.type = connection.atom("_NET_STARTUP_INFO");
    }
    connection.sync();
}

} // namespace

class Recognition : public AgentTest
{
protected:
    void protect(const std::vector<std::string>& applications)
    {
        open({.screens = {{0, 0, 1280, 720}}});
        watchHere(applications);
    }

    /// A program of the home folder that is a copy of a calculator.
    std::filesystem::path copiedProgram(const std::string& name) const
    {
        const std::filesystem::path program = session->desk.home() / name;
        std::filesystem::copy_file("/usr/bin/galculator", program);
        return program;
    }

    void addApplication(const std::string& identifier, const std::string& lines) const
    {
        addEntry(identifier, "[Desktop Entry]\nType=Application\n" + lines);
    }

    void removeEntry(const std::string& identifier) const
    {
        std::filesystem::remove(
            session->desk.home() / ".local/share/applications" / (identifier + ".desktop")
        );
    }

    /// Whether the agent knows of the changes to entries that were made before: it knows one that
    /// is made now.
    [[nodiscard]] bool knowsTheEntries() const
    {
        const std::string marker =
            "marker" + std::to_string(session->countOf("Will start: Marker"));
        const std::filesystem::path program = session->desk.home() / marker;
        std::filesystem::copy_file("/bin/true", program);
        addApplication(marker, "Name=Marker\nExec=" + program.string() + "\n");
        const std::size_t before = session->countOf("Will start: Marker");
        return desktop::waitUntil(
            [&] {
                session->desk.start({program}).waitForEnd(PATIENCE);
                return session->countOf("Will start: Marker") > before;
            },
            PATIENCE,
            50ms
        );
    }

    /// Whether what protected applications are known by is kept.
    [[nodiscard]] bool keeps(const std::string& identifier) const
    {
        const auto file =
            session->desk.home() / ".local/share/com.quorvent.Tarvel/recognition.conf";
        return desktop::waitUntil(
            [&] {
                return std::filesystem::exists(file) &&
                       desktop::readFile(file).find("[" + identifier + "]") != std::string::npos;
            },
            PATIENCE
        );
    }

    [[nodiscard]] bool locksFor(const std::string& name, std::size_t starts = 1) const
    {
        return session->waitForCover() && session->countOf("Will start: " + name) == starts;
    }
};

TEST_F(Recognition, AnnouncementOfWhatRunsAlreadyLocks)
{
    protect({EDITOR});
    const auto editor = session->desk.start({"mousepad"});
    ASSERT_TRUE(locksFor("Mousepad") && session->waitForLine("Did start: Mousepad"));
    ASSERT_TRUE(opensWithThePassword());

    announce(
        session->desk.connection(),
        "new: ID=\"x_TIME1\" NAME=\"Mousepad\" "
        "APPLICATION_ID=\"/usr/share/applications/org.xfce.mousepad.desktop\""
    );

    EXPECT_TRUE(locksFor("Mousepad", 2));
    EXPECT_TRUE(opensWithThePassword());
}

TEST_F(Recognition, AnnouncedStartIsOneStart)
{
    protect({EDITOR});
    announce(
        session->desk.connection(), "new: ID=x_TIME1 APPLICATION_ID=org.xfce.mousepad.desktop"
    );
    const auto editor = session->desk.start({"mousepad"});

    ASSERT_TRUE(session->waitForCover() && session->waitForLine("Did start: Mousepad"));
    EXPECT_EQ(session->countOf("Will start: Mousepad"), 1U);
    EXPECT_TRUE(opensWithThePassword());
}

TEST_F(Recognition, DocumentThatIsOpenedInARunningOfficeLocksAndComesToTheFront)
{
    protect({"libreoffice-calc"});
    const auto document = session->desk.home() / "document.slk";
    desktop::writeFile(document, SPREADSHEET);
    const auto office = session->desk.start({"libreoffice", "--nologo", "--norestore"});
    ASSERT_TRUE(session->waitForLine("Did start: LibreOffice Start Center"));
    ASSERT_TRUE(isUncovered(session->desk));

    auto opener = session->desk.start({"libreoffice", "--nologo", "--norestore", document});

    ASSERT_TRUE(locksFor("LibreOffice Calc"));
    ASSERT_TRUE(opensWithThePassword());
    EXPECT_TRUE(desktop::waitUntil(
        [&] {
            desktop::WindowList& windows = session->desk.windows();
            return windows.classOf(windows.active()) == "libreoffice-calc";
        },
        PATIENCE
    ));
}

TEST_F(Recognition, CopyOfAProgramLocksByItsWindowWhateverThatIsCalled)
{
    protect({CALCULATOR});
    const auto copy = session->desk.start({copiedProgram("innocent")});

    ASSERT_TRUE(locksFor("Galculator"));
    EXPECT_TRUE(opensWithThePassword());
    EXPECT_EQ(session->desk.windows().ofClass("Galculator"), 0U);
}

TEST_F(Recognition, CopyOfAProgramLocksThoughAnEntryOfTheHomeFolderNamesIt)
{
    protect({CALCULATOR});
    const std::filesystem::path program = copiedProgram("innocent");
    addApplication("innocent", "Name=Innocent\nExec=" + program.string() + "\n");
    ASSERT_TRUE(knowsTheEntries());
    const auto copy = session->desk.start({program});

    ASSERT_TRUE(locksFor("Galculator"));
    EXPECT_TRUE(opensWithThePassword());
    EXPECT_EQ(session->countOf("Will start: Innocent"), 1U);
}

TEST_F(Recognition, EntryThatIsHiddenInTheHomeFolderHidesNothing)
{
    protect({CALCULATOR});
    ASSERT_TRUE(keeps(CALCULATOR));
    addApplication(CALCULATOR, "Name=Innocent\nHidden=true\n");
    ASSERT_TRUE(knowsTheEntries());

    const auto calculator = session->desk.start({"galculator"});

    EXPECT_TRUE(locksFor("Galculator"));
}

TEST_F(Recognition, EntryThatIsOverriddenInTheHomeFolderHidesNothing)
{
    protect({CALCULATOR});
    ASSERT_TRUE(keeps(CALCULATOR));
    addApplication(CALCULATOR, "Name=Innocent\nExec=/bin/false\nStartupWMClass=innocent\n");
    ASSERT_TRUE(knowsTheEntries());

    const auto calculator = session->desk.start({"galculator"});

    EXPECT_TRUE(locksFor("Innocent"));
}

TEST_F(Recognition, EntryThatIsDeletedHidesNothingAlsoFromTheNextAgent)
{
    open({.screens = {{0, 0, 1280, 720}}});
    const std::filesystem::path program = copiedProgram("own-program");
    addApplication("own", "Name=Own\nExec=" + program.string() + "\n");
    watchHere({"own"});
    ASSERT_TRUE(keeps("own"));
    removeEntry("own");
    ASSERT_TRUE(knowsTheEntries());
    {
        const auto first = session->desk.start({program});
        EXPECT_TRUE(locksFor("Own"));
    }
    ASSERT_TRUE(session->waitForLine("Terminated: Own") && session->waitForEndOfCover());

    session->process().signal(SIGKILL); // the helper starts another one
    ASSERT_TRUE(session->waitForLine("Monitoring services started", 2));
    const auto second = session->desk.start({program});

    EXPECT_TRUE(locksFor("Own", 2));
}

TEST_F(Recognition, ApplicationThatIsRemovedAndInstalledAgainIsProtectedAgain)
{
    open({.screens = {{0, 0, 1280, 720}}});
    const std::filesystem::path program = copiedProgram("own-program");
    const std::string lines = "Name=Own\nExec=" + program.string() + "\n";
    addApplication("own", lines);
    watchHere({"own"});
    ASSERT_TRUE(keeps("own"));
    std::filesystem::remove(program);
    removeEntry("own");
    ASSERT_TRUE(knowsTheEntries());
    copiedProgram("own-program");
    addApplication("own", lines);
    ASSERT_TRUE(knowsTheEntries());

    const auto again = session->desk.start({program});

    EXPECT_TRUE(locksFor("Own"));
}

TEST_F(Recognition, OneTerminalIsProtectedWithoutTheOthers)
{
    protect({TERMINAL});
    const auto another = session->desk.start({"qterminal"});
    ASSERT_TRUE(session->waitForLine("Did start: QTerminal"));
    EXPECT_TRUE(isUncovered(session->desk));

    const auto xterm = session->desk.start({"xterm"});

    EXPECT_TRUE(locksFor("XTerm"));
    EXPECT_TRUE(opensWithThePassword());
}

TEST_F(Recognition, AdministrativeApplicationsAreProtectedWhateverTheirMake)
{
    open({.screens = {{0, 0, 1280, 720}}});
    session->protect({});
    session->storeSetting("Administrative", "1");
    ASSERT_TRUE(session->startAndWait());
    for (const auto& [program, name] :
         {std::pair("qterminal", "QTerminal"),
          std::pair("gnome-system-monitor", "System Monitor")}) {
        const auto application = session->desk.start({program});
        EXPECT_TRUE(locksFor(name) && opensWithThePassword()) << name;
    }

    const auto editor = session->desk.start({"mousepad"});
    ASSERT_TRUE(session->waitForLine("Did start: Mousepad"));
    EXPECT_TRUE(isUncovered(session->desk));
}

} // namespace agent
