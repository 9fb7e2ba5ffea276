// A file on a disk that does not answer: while this lives, whoever opens the file waits, for as
// long as the kernel lets a lease be held. Throws `Failure` where the file system knows no leases.
#pragma once

#include "desktop/Failure.h"

#include <csignal>
#include <filesystem>

#include <fcntl.h>
#include <unistd.h>

namespace desktop {

class HeldFile
{
public:
    /// The file must be there, and nobody may have it open.
    explicit HeldFile(const std::filesystem::path& file)
        : descriptor(open(file.c_str(), O_RDWR | O_CLOEXEC)),
          handlerBefore(std::signal(SIGIO, SIG_IGN)) // the kernel's request to let go
    {
        if (descriptor == -1 || fcntl(descriptor, F_SETLEASE, F_WRLCK) == -1) {
            throw Failure("cannot hold " + file.string());
        }
    }

    ~HeldFile()
    {
        close(descriptor);
        static_cast<void>(std::signal(SIGIO, handlerBefore));
    }

    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;
    HeldFile(HeldFile&&) = delete;
    HeldFile& operator=(HeldFile&&) = delete;

private:
    int descriptor;
    void (*handlerBefore)(int);
};

} // namespace desktop
