// Whether somebody serves the bus at an address. The bus library waits for a bus that took the
// connection and says nothing, for ever, and holds everything else back meanwhile; so this is asked
// first. Any thread.
#pragma once

#include <chrono>
#include <string>

namespace dbus {

/// Waits as long as the bus does. True as well for an address of a kind that cannot be asked.
bool busAnswers(const std::string& address);

/// There is a bus that takes connections and does not answer within this time.
bool busIsSilent(const std::string& address, std::chrono::milliseconds time);

} // namespace dbus
