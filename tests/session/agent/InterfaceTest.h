// A test with the agent's own windows, used with keys and clicks alone.
#pragma once

#include "session/agent/AgentTest.h"

#include <string>

namespace agent {

inline constexpr auto GREETING = "Welcome to Tarvel";
inline constexpr auto PREFERENCES = "Tarvel Password";
inline constexpr auto TARVEL = "Tarvel"; // the popover as a window, and alerts

class InterfaceTest : public AgentTest
{
protected:
    /// Whether a window of this title comes and can be typed into, within reasonable time.
    bool getsKeys(const std::string& title) const;

    /// Whether there is no window of this title any more, within reasonable time.
    bool goes(const std::string& title) const;

    /// Clicks on the ground of the window, so that it gets the keyboard.
    bool turnTo(const std::string& title) const;

    void press(std::uint32_t keySymbol, const std::vector<std::uint32_t>& held = {}) const;

    /// Types both texts into the fields of the password window, and Return.
    void choosePassword(const std::string& password, const std::string& confirmation) const;

    /// Whether the popover, a window of its own where there is no status area, shows the strip
    /// above the list, which no other page of it has.
    bool showsTheList() const;

    /// What the keyring holds under this key.
    [[nodiscard]] std::optional<std::string> kept(const std::string& key) const;
};

} // namespace agent
