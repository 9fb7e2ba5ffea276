// The folder in which the programs of this user's sessions find each other. Nobody else can enter
// it: it is this user's own, mode 0700, and not reached through a link. Any thread.
#pragma once

#include "linux/descriptors/FileDescriptor.h"

#include <string>

namespace session {

/// Opens the folder, made where it is missing: in XDG_RUNTIME_DIR, or in /tmp where that cannot be
/// used. Not open when neither can be; `problem` then says why.
descriptors::FileDescriptor openSessionDirectory(std::string& problem);

/// A path that reaches `name` in the folder, short enough for a socket address.
std::string pathIn(const descriptors::FileDescriptor& directory, const std::string& name);

} // namespace session
