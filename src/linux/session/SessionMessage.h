// What the programs of a session say to each other. Every message is one short line of text.
#pragma once

#include <optional>
#include <string>

namespace session {

/// Asks the first instance to show itself.
inline constexpr auto ACTIVATE = "activate";
/// Says that this was understood.
inline constexpr auto ACTIVATED = "activated";

/// The last message of a process that ends through exit().
std::string exitMessage(int status);

/// The status in an exit message; nothing when `message` is another one.
std::optional<int> exitStatusIn(const std::string& message);

} // namespace session
