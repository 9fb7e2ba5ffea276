// A test with the agent on a private desktop. When it fails it says what there was to see.
#pragma once

#include "agent/AgentSession.h"
#include "agent/Cover.h"
#include "agent/Recorder.h"
#include "desktop/Wait.h"

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace agent {

inline constexpr auto TERMINAL = "debian-xterm";

class AgentTest : public ::testing::Test
{
protected:
    void TearDown() override;

    /// The desktop alone.
    void open(const desktop::Desktop::Parts& parts = {});

    /// The desktop, with the agent watching these applications; a failure where it does not.
    void watch(const std::vector<std::string>& applications);

    /// As the last, on a desktop that is open.
    void watchHere(const std::vector<std::string>& applications);

    /// Makes an application of one's own known to the desktop.
    void addEntry(const std::string& identifier, const std::string& text) const;

    /// Terminals, started at once.
    std::vector<std::unique_ptr<Recorder>> startTerminals(int number) const;

    /// Whether the process has the focus within reasonable time.
    bool getsFocus(const desktop::ChildProcess& process) const;

    /// Whether the cover stays on all screens for this long.
    bool coverStaysFor(std::chrono::milliseconds duration) const;

    /// Whether a terminal that was started is covered, with its window behind the cover.
    bool locks() const;

    /// Whether the right password lifts the cover.
    bool opensWithThePassword() const;

    std::unique_ptr<AgentSession> session;
};

} // namespace agent
