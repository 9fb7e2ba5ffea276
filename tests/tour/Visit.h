// The desktop of the tour in a browser on this machine, for somebody without a display. It is
// served on 127.0.0.1 alone, and only to those who know a password made for this visit: other users
// of the machine would otherwise be at a desktop that runs as this user.
#pragma once

#include "desktop/ChildProcess.h"
#include "tour/Stage.h"

#include <cstdint>
#include <string>

namespace tour {

class Visit
{
public:
    explicit Visit(Stage& stage) : stage(stage) {}

    /// Starts the agent, says where the desktop is to be seen, and returns when this process gets
    /// SIGINT, SIGTERM or SIGHUP, or when the desktop is gone. Throws `desktop::Failure`.
    void untilAskedToEnd();

private:
    desktop::ChildProcess showDesktop(std::uint16_t port, const std::string& password);
    desktop::ChildProcess serveBrowser(std::uint16_t port, std::uint16_t desktopPort);

    Stage& stage;
};

} // namespace tour
