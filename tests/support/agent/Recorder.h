// A real terminal that writes down every key it is given.
#pragma once

#include "desktop/Desktop.h"
#include "desktop/Pixels.h"

#include <filesystem>
#include <string>

namespace agent {

class Recorder
{
public:
    /// The terminal's ground, a colour that nothing else has.
    static constexpr desktop::Pixel PAPER = 0xFFF8E7;

    /// Starts xterm; `name` tells several apart.
    explicit Recorder(desktop::Desktop& desk, const std::string& name = "recorder");

    desktop::ChildProcess& process() { return xterm; }

    /// Waits until what runs in the terminal listens; what is typed from then on is kept.
    bool waitUntilItListens();

    [[nodiscard]] std::string received() const;

    /// Waits until this text, and nothing else, has arrived.
    bool waitFor(const std::string& text) const;

private:
    std::filesystem::path file;
    desktop::ChildProcess xterm;
};

} // namespace agent
