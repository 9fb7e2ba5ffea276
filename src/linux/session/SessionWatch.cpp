#include "linux/session/SessionWatch.h"

#include "linux/descriptors/ProcessDescriptor.h"
#include "linux/session/LocalSocket.h"
#include "linux/session/SessionDirectory.h"
#include "linux/session/SessionMessage.h"
#include "linux/session/SessionName.h"

namespace session {

std::unique_ptr<SessionWatch> SessionWatch::open(const std::string& program)
{
    std::string problem;
    const descriptors::FileDescriptor directory = openSessionDirectory(problem);
    if (!directory.isOpen()) {
        return nullptr;
    }
    descriptors::FileDescriptor connection =
        connectTo(pathIn(directory, socketName(sessionName(program))));
    const std::optional<Peer> peer = peerOf(connection);
    if (!peer.has_value() || peer->user != ::geteuid()) {
        return nullptr;
    }
    descriptors::FileDescriptor process = descriptors::openProcess(peer->processIdentifier);
    // The connection is still up: the identifier has not passed to another process meanwhile.
    if (!process.isOpen() || waitUntilReadable(connection, 0)) {
        return nullptr;
    }
    return std::unique_ptr<SessionWatch>(
        new SessionWatch(peer->processIdentifier, std::move(connection), std::move(process))
    );
}

SessionWatch::SessionWatch(
    pid_t identifier, descriptors::FileDescriptor connection, descriptors::FileDescriptor process
)
    : identifier(identifier),
      connection(std::move(connection)),
      process(std::move(process))
{
}

bool SessionWatch::hasEnded() const
{
    return waitUntilReadable(process, 0);
}

std::optional<int> SessionWatch::exitStatus()
{
    if (!status.has_value()) {
        status = exitStatusIn(receiveMessage(connection).value_or(std::string()));
    }
    return status;
}

} // namespace session
