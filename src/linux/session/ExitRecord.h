// The status with which a process that held a name in the session has ended, for those that come
// after its end or could not hear it. A file in the session's folder; what cannot be written or
// read counts as nothing said. One process writes at a time: who holds the name. One thread.
#pragma once

#include "linux/descriptors/FileDescriptor.h"

#include <optional>
#include <string>

#include <sys/types.h>

namespace session {

struct ExitRecord
{
    pid_t process = 0;
    int status = 0;
};

/// `name` is made by `sessionName`.
void writeExitRecord(
    const descriptors::FileDescriptor& directory, const std::string& name, ExitRecord record
);

std::optional<ExitRecord>
readExitRecord(const descriptors::FileDescriptor& directory, const std::string& name);

/// For one who takes the name: nobody has ended yet.
void removeExitRecord(const descriptors::FileDescriptor& directory, const std::string& name);

} // namespace session
