#include "linux/xdg/AtomicFile.h"

#include "linux/descriptors/FileDescriptor.h"

#include <cerrno>
#include <cstdio>
#include <fstream>
#include <sstream>

#include <fcntl.h>
#include <unistd.h>

namespace xdg {

namespace {

/// All of it on the disk, or false.
bool writeWhole(const std::string& path, const std::string& text, unsigned mode)
{
    const descriptors::FileDescriptor file(
        ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, mode)
    );
    std::size_t written = 0;
    while (file.isOpen() && written < text.size()) {
        const ssize_t size = ::write(file.get(), text.data() + written, text.size() - written);
        if (size < 0 && errno == EINTR) {
            continue;
        }
        if (size <= 0) {
            return false;
        }
        written += static_cast<std::size_t>(size);
    }
    return file.isOpen() && ::fsync(file.get()) == 0;
}

} // namespace

bool replaceFile(const std::string& path, const std::string& text, unsigned mode)
{
    const std::string temporary = path + ".new";
    if (writeWhole(temporary, text, mode) && ::rename(temporary.c_str(), path.c_str()) == 0) {
        return true;
    }
    const int reason = errno;
    ::unlink(temporary.c_str());
    errno = reason;
    return false;
}

std::string contentOf(const std::string& path)
{
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

} // namespace xdg
