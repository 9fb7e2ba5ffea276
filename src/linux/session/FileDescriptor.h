// Owns one open file descriptor and closes it; -1 stands for none.
#pragma once

#include <utility>

#include <unistd.h>

namespace session {

class FileDescriptor
{
public:
    FileDescriptor() = default;

    explicit FileDescriptor(int descriptor) : descriptor(descriptor) {}

    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;

    FileDescriptor(FileDescriptor&& other) noexcept
        : descriptor(std::exchange(other.descriptor, -1))
    {
    }

    FileDescriptor& operator=(FileDescriptor&& other) noexcept
    {
        std::swap(descriptor, other.descriptor);
        return *this;
    }

    ~FileDescriptor()
    {
        if (descriptor >= 0) {
            ::close(descriptor);
        }
    }

    int get() const { return descriptor; }

    bool isOpen() const { return descriptor >= 0; }

private:
    int descriptor = -1;
};

} // namespace session
