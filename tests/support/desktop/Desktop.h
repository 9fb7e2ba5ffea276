// A whole desktop of its own: folders, X server, window manager, session bus and keyring that
// nothing of the machine's own desktop knows of. All of it goes with the object.
#pragma once

#include "desktop/ChildProcess.h"
#include "desktop/Input.h"
#include "desktop/PrivateBus.h"
#include "desktop/PrivateKeyring.h"
#include "desktop/PrivateXServer.h"
#include "desktop/TemporaryFolder.h"
#include "desktop/WindowList.h"
#include "desktop/WindowManager.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace desktop {

/// Environment of a session whose home, XDG folders and runtime folder lie below `folder`, without
/// a display and without a bus. What sanitizers read is passed on.
Environment privateEnvironment(const TemporaryFolder& folder);

class Desktop
{
    TemporaryFolder files; // first: all else lives in it

public:
    struct Parts
    {
        std::vector<Rectangle> screens = PrivateXServer::twoScreens();
        bool windowManager = true;
        bool bus = true;
        bool keyring = true;                 // only with a bus
        bool framebuffer = false;            // the pixels are in `framebufferFile`
        bool keyringPrompts = false;         // a closed keyring can ask the user for its password
        std::filesystem::path services = {}; // what the bus may start besides
    };

    /// Throws `Failure` when a part does not come up.
    Desktop() : Desktop(Parts{}) {}

    explicit Desktop(const Parts& parts);
    ~Desktop();
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;
    Desktop(Desktop&&) = delete;
    Desktop& operator=(Desktop&&) = delete;

    /// What programs on this desktop are started with; tests may add to it.
    Environment environment;

    ChildProcess start(const std::vector<std::string>& arguments);

    [[nodiscard]] const std::filesystem::path& folder() const { return files.path(); }

    [[nodiscard]] std::filesystem::path home() const { return files.path() / "home"; }

    [[nodiscard]] std::filesystem::path framebufferFile() const
    {
        return files.path() / "framebuffer/Xvfb_screen0";
    }

    PrivateXServer& server() { return *xServer; }

    XConnection& connection() { return xServer->connection(); }

    PrivateBus& bus() { return *sessionBus; }

    PrivateKeyring& keyring() { return *secretService; }

    Input& input() { return hands; }

    WindowList& windows() { return list; }

    /// For a desktop that was opened without one.
    void startWindowManager();

    void stopBus() { sessionBus.reset(); }

    void stopKeyring() { secretService.reset(); }

    /// Starts the keyring again with its files as they were left, closed.
    void startLockedKeyring();

private:
    std::unique_ptr<PrivateXServer> xServer;
    std::unique_ptr<WindowManager> manager;
    std::unique_ptr<PrivateBus> sessionBus;
    std::unique_ptr<PrivateKeyring> secretService;
    Input hands;
    WindowList list;
};

} // namespace desktop
