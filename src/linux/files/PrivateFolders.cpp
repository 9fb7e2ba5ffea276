#include "linux/files/PrivateFolders.h"

#include <cerrno>

#include <sys/stat.h>

namespace files {

namespace {

bool isFolder(const std::filesystem::path& path)
{
    struct stat status = {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool make(const std::filesystem::path& path)
{
    if (::mkdir(path.c_str(), S_IRWXU) == 0) {
        return true;
    }
    if (errno != EEXIST) {
        return false;
    }
    const bool isThere = isFolder(path);
    errno = EEXIST;
    return isThere;
}

} // namespace

bool makePrivateFolders(const std::filesystem::path& path)
{
    if (make(path)) {
        return true;
    }
    return errno == ENOENT && path.has_relative_path() && makePrivateFolders(path.parent_path()) &&
           make(path);
}

} // namespace files
