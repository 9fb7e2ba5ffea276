#include "linux/session/SessionDirectory.h"

#include "linux/descriptors/ErrorText.h"
#include "linux/process/Environment.h"
#include "linux/session/Programs.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace session {

namespace {

bool isOwn(const descriptors::FileDescriptor& directory, mode_t forbidden)
{
    struct stat facts = {};
    return ::fstat(directory.get(), &facts) == 0 && facts.st_uid == ::geteuid() &&
           (facts.st_mode & forbidden) == 0;
}

descriptors::FileDescriptor openDirectory(int parent, const std::string& path, int flags)
{
    return descriptors::FileDescriptor(
        ::openat(parent, path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | flags)
    );
}

descriptors::FileDescriptor openPrivate(int parent, const std::string& path, std::string& problem)
{
    if (::mkdirat(parent, path.c_str(), S_IRWXU) != 0 && errno != EEXIST) {
        problem += path + ": " + descriptors::errorText() + "; ";
        return {};
    }
    descriptors::FileDescriptor directory = openDirectory(parent, path, O_NOFOLLOW);
    if (!directory.isOpen() || !isOwn(directory, S_IRWXG | S_IRWXO)) {
        problem += path + ": not a private folder of this user; ";
        return {};
    }
    // Who cleans up old files leaves a locked folder alone.
    ::flock(directory.get(), LOCK_SH | LOCK_NB);
    return directory;
}

descriptors::FileDescriptor openRuntimeDirectory(std::string& problem)
{
    const std::string path = process::environmentValue("XDG_RUNTIME_DIR");
    if (!path.starts_with('/')) {
        return {};
    }
    descriptors::FileDescriptor parent = openDirectory(AT_FDCWD, path, 0);
    if (!parent.isOpen() || !isOwn(parent, S_IWGRP | S_IWOTH)) {
        problem += path + ": not this user's folder; ";
        return {};
    }
    return openPrivate(parent.get(), IDENTIFIER, problem);
}

} // namespace

descriptors::FileDescriptor openSessionDirectory(std::string& problem)
{
    descriptors::FileDescriptor directory = openRuntimeDirectory(problem);
    if (directory.isOpen()) {
        return directory;
    }
    const std::string path = std::string("/tmp/") + IDENTIFIER + "-" + std::to_string(::geteuid());
    return openPrivate(AT_FDCWD, path, problem);
}

std::string pathIn(const descriptors::FileDescriptor& directory, const std::string& name)
{
    return "/proc/self/fd/" + std::to_string(directory.get()) + "/" + name;
}

} // namespace session
