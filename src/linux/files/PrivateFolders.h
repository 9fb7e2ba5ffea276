// Folders that nobody but the user may enter. Any thread; blocks on the disk.
#pragma once

#include <filesystem>

namespace files {

/// Makes the folder, and those above it that are missing; what is there already stays as it is.
/// False, with the reason in errno, where it cannot be made; EEXIST where something else has its
/// name.
bool makePrivateFolders(const std::filesystem::path& path);

} // namespace files
