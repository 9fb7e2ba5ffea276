// An X server of its own (Xvfb) on a display number of its own, with as many screens as asked for;
// the screens are RandR monitors, side by side where nothing else is said. One thread at a time.
#pragma once

#include "desktop/ChildProcess.h"
#include "desktop/Rectangle.h"
#include "desktop/XConnection.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace desktop {

class PrivateXServer
{
public:
    /// The screens of a desktop where nothing else is said: two of 1280 x 720, the first is the
    /// main one.
    static std::vector<Rectangle> twoScreens();

    /// Returns when clients can connect; throws `Failure` when the server does not come up. Where a
    /// folder is given, the server keeps its pixels there in a file (see `Framebuffer`). `options`
    /// are further ones of the server's own.
    explicit PrivateXServer(
        const std::vector<Rectangle>& screens = twoScreens(),
        const Environment& environment = {{"PATH", "/usr/bin:/bin"}},
        const std::filesystem::path& framebufferFolder = {},
        const std::vector<std::string>& options = {}
    );

    [[nodiscard]] const std::string& displayName() const { return name; }

    [[nodiscard]] pid_t processId() const { return server->id(); }

    [[nodiscard]] XConnection& connection() { return *client; }

    /// The screens as they are, the main one first.
    [[nodiscard]] const std::vector<Rectangle>& screens() const { return monitors; }

    /// Adds, removes, moves, resizes: afterwards the screens are exactly these, the first is the
    /// main one, and the root window is as large as they need. At most `LARGEST` in all.
    void setScreens(const std::vector<Rectangle>& screens);

    static constexpr std::uint16_t LARGEST_WIDTH = 3840;
    static constexpr std::uint16_t LARGEST_HEIGHT = 2160;

private:
    std::unique_ptr<ChildProcess> server;
    std::unique_ptr<XConnection> client;
    std::string name;
    std::vector<Rectangle> monitors;
};

} // namespace desktop
