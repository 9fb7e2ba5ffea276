// A folder of mode 0700 that goes, with all that is in it, when the object goes.
#pragma once

#include <filesystem>
#include <string>

namespace desktop {

class TemporaryFolder
{
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    TemporaryFolder(TemporaryFolder&&) = delete;
    TemporaryFolder& operator=(TemporaryFolder&&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return folder; }

    /// A folder of mode 0700 below this one, made when it is missing.
    [[nodiscard]] std::filesystem::path subfolder(const std::string& name) const;

private:
    std::filesystem::path folder;
};

/// The whole file as bytes; empty when it cannot be read.
std::string readFile(const std::filesystem::path& path);

void writeFile(const std::filesystem::path& path, const std::string& content);

} // namespace desktop
