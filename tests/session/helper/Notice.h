// Notices between programs, as signals on a session bus.
#pragma once

#include <string>

/// True when the notice has been handed to the bus at `address`.
bool postNotice(const std::string& address, const std::string& name, const std::string& object);
