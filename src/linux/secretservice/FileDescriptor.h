// Owns an open file.
#pragma once

#include <utility>

#include <unistd.h>

namespace secretservice {

class FileDescriptor
{
public:
    explicit FileDescriptor(int number) : number(number) {}

    ~FileDescriptor() { close(); }

    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    FileDescriptor(FileDescriptor&&) = delete;
    FileDescriptor& operator=(FileDescriptor&&) = delete;

    [[nodiscard]] bool isOpen() const { return number >= 0; }

    [[nodiscard]] int get() const { return number; }

private:
    void close()
    {
        if (number >= 0) {
            ::close(std::exchange(number, -1));
        }
    }

    int number;
};

} // namespace secretservice
