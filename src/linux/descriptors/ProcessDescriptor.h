// A descriptor that stands for a process and can be read once the process has ended and given up
// all that it held. One thread at a time.
#pragma once

#include "linux/descriptors/FileDescriptor.h"

#include <sys/syscall.h>
#include <sys/types.h>

namespace descriptors {

/// Not open when there is no such process.
inline FileDescriptor openProcess(pid_t identifier)
{
    // The C library of Debian 12 declares pidfd_open() in a way that C++ cannot link.
    return FileDescriptor(static_cast<int>(::syscall(SYS_pidfd_open, identifier, 0)));
}

} // namespace descriptors
