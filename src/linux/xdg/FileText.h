// Small files read whole, and what tells whether one has changed. Any thread may call.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <sys/types.h>

namespace xdg {

struct FileStamp
{
    dev_t device = 0;
    ino_t number = 0;
    off_t size = 0;
    std::int64_t modified = 0; // nanoseconds
    std::int64_t changed = 0;

    friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

/// Nothing for what is missing or is no regular file.
std::optional<FileStamp> stampOf(const std::string& path);

using FolderIdentity = std::pair<dev_t, ino_t>;

/// Nothing for what is missing or is no folder.
std::optional<FolderIdentity> identityOf(const std::string& folder);

/// The text of a regular file of sensible size.
std::optional<std::string> readText(const std::string& path);

/// True for files of one size that agree in their first and their last megabyte, and are not empty.
bool isCopyOf(const std::string& path, const std::string& otherPath);

struct FolderNames
{
    std::vector<std::string> files; // all that is no folder; sorted, as are the folders
    std::vector<std::string> folders;
};

/// What stands in a folder; links count as what they lead to.
FolderNames folderNames(const std::string& folder);

} // namespace xdg
