// Sockets between the programs of one user on one machine; messages keep their borders. No call
// here waits and none raises SIGPIPE. Any thread, one a socket at a time.
#pragma once

#include "linux/descriptors/FileDescriptor.h"

#include <optional>
#include <string>

#include <sys/types.h>

namespace session {

struct Peer
{
    pid_t processIdentifier = 0;
    uid_t user = 0;
};

/// Listens at `path`, which must not exist. Not open when that fails; errno says why.
descriptors::FileDescriptor listenAt(const std::string& path);

/// Not open when nobody listens at `path`.
descriptors::FileDescriptor connectTo(const std::string& path);

/// Not open when nobody is waiting to be let in.
descriptors::FileDescriptor acceptFrom(const descriptors::FileDescriptor& listener);

/// Who made the other end: the process that listened or connected.
std::optional<Peer> peerOf(const descriptors::FileDescriptor& socket);

bool sendMessage(const descriptors::FileDescriptor& socket, const std::string& text);

/// One message; empty text when the other end is closed; nothing when none has arrived yet.
std::optional<std::string> receiveMessage(const descriptors::FileDescriptor& socket);

/// False when `milliseconds` pass before the descriptor can be read or its other end closes.
bool waitUntilReadable(const descriptors::FileDescriptor& descriptor, int milliseconds);

} // namespace session
