// Files that are either what they were or all new, whatever happens meanwhile, and that are on the
// disk when the call returns. Any thread; blocks on the disk. Failure is false, with the reason in
// errno.
#pragma once

#include <cstddef>
#include <span>
#include <string>

namespace files {

/// The name beside a file of what is to become it. It is this process's own: another may be about
/// to write the same file.
std::string draftOf(const std::string& path);

/// Writes a file that was not there; one of that name that an earlier process left is removed
/// before. What cannot be written whole is not left.
bool writeNew(const std::string& path, std::span<const std::byte> bytes, unsigned mode);

/// Puts the bytes in the place of the file.
bool replaceFile(const std::string& path, std::span<const std::byte> bytes, unsigned mode);

/// What was renamed, linked and removed in the folder is on the disk.
bool flushFolder(const std::string& path);

} // namespace files
