// Owns one file descriptor and closes it at its end; -1 stands for none. One thread at a time.
#pragma once

#include <utility>

#include <unistd.h>

namespace descriptors {

class FileDescriptor
{
public:
    FileDescriptor() = default;

    explicit FileDescriptor(int number) : number(number) {}

    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;

    FileDescriptor(FileDescriptor&& other) noexcept : number(std::exchange(other.number, -1)) {}

    FileDescriptor& operator=(FileDescriptor&& other) noexcept
    {
        std::swap(number, other.number);
        return *this;
    }

    ~FileDescriptor()
    {
        if (number >= 0) {
            ::close(number);
        }
    }

    [[nodiscard]] int get() const { return number; }

    [[nodiscard]] bool isOpen() const { return number >= 0; }

    /// Gives it away: the caller closes it.
    [[nodiscard]] int release() { return std::exchange(number, -1); }

private:
    int number = -1;
};

} // namespace descriptors
