// How the programs of one graphical session name what they share. A user can have several sessions
// at a time, one a display; what bears the same name belongs to the same program in the same one.
// Any thread.
#pragma once

#include <string>

namespace session {

/// `program` and the display in this process's environment, fit to be a file name: different ones
/// stay different. The Wayland display counts first: a session that has both is a Wayland session.
std::string sessionName(const std::string& program);

/// The files that stand for a name made by `sessionName`: the lock and the socket.
std::string lockName(const std::string& name);
std::string socketName(const std::string& name);

/// The file with the last words of the process that held the name, once it has ended.
std::string exitName(const std::string& name);

} // namespace session
