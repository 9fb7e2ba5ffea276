#include "linux/session/SessionWatch.h"

#include "linux/descriptors/ProcessDescriptor.h"
#include "linux/session/ExitRecord.h"
#include "linux/session/LocalSocket.h"
#include "linux/session/SessionDirectory.h"
#include "linux/session/SessionMessage.h"
#include "linux/session/SessionName.h"

namespace session {

namespace {

std::optional<ExitRecord> latestRecord(const std::string& name)
{
    std::string problem;
    const descriptors::FileDescriptor directory = openSessionDirectory(problem);
    return directory.isOpen() ? readExitRecord(directory, name) : std::nullopt;
}

} // namespace

std::optional<int> SessionWatch::latestExitStatus(const std::string& program)
{
    const std::optional<ExitRecord> record = latestRecord(sessionName(program));
    return record.has_value() ? std::optional(record->status) : std::nullopt;
}

std::unique_ptr<SessionWatch> SessionWatch::open(const std::string& program)
{
    std::string problem;
    const descriptors::FileDescriptor directory = openSessionDirectory(problem);
    if (!directory.isOpen()) {
        return nullptr;
    }
    const std::string name = sessionName(program);
    descriptors::FileDescriptor connection = connectTo(pathIn(directory, socketName(name)));
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
        new SessionWatch(name, peer->processIdentifier, std::move(connection), std::move(process))
    );
}

SessionWatch::SessionWatch(
    std::string name,
    pid_t identifier,
    descriptors::FileDescriptor connection,
    descriptors::FileDescriptor process
)
    : name(std::move(name)),
      identifier(identifier),
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
    if (!status.has_value() && hasEnded()) {
        // It may have had too many listeners.
        const std::optional<ExitRecord> record = latestRecord(name);
        if (record.has_value() && record->process == identifier) {
            status = record->status;
        }
    }
    return status;
}

} // namespace session
