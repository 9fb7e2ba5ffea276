// Watches the process that holds a program's name in this session (`SessionInstance`), whoever
// started it. One thread.
#pragma once

#include "linux/descriptors/FileDescriptor.h"

#include <memory>
#include <optional>
#include <string>

#include <sys/types.h>

namespace session {

class SessionWatch
{
public:
    /// Nothing when no process holds the name now.
    static std::unique_ptr<SessionWatch> open(const std::string& program);

    /// The status with which the latest that held the name ended; nothing when it said none, and
    /// while one holds it.
    static std::optional<int> latestExitStatus(const std::string& program);

    pid_t processIdentifier() const { return identifier; }

    /// Can be read once the process has ended; the name is free by then.
    int fd() const { return process.get(); }

    bool hasEnded() const;

    /// The status that the process gave to exit(); nothing when it was killed, crashed or lives.
    std::optional<int> exitStatus();

private:
    SessionWatch(
        std::string name,
        pid_t identifier,
        descriptors::FileDescriptor connection,
        descriptors::FileDescriptor process
    );

    const std::string name;
    const pid_t identifier;
    descriptors::FileDescriptor connection;
    descriptors::FileDescriptor process;
    std::optional<int> status;
};

} // namespace session
