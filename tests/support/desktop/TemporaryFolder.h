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

    /// Free of links, as what the kernel says about a process is.
    [[nodiscard]] const std::filesystem::path& path() const { return folder; }

    /// What has this name below the folder.
    [[nodiscard]] std::string path(const std::string& name) const
    {
        return (folder / name).string();
    }

    /// Writes a file, with the folders above it. Its path.
    std::string write(const std::string& name, const std::string& content) const;

    /// Writes a file that may be executed.
    std::string writeProgram(const std::string& name, const std::string& content) const;

    /// Copies a program under a name of its own, so that no other process runs it.
    std::string copyProgram(const std::string& source, const std::string& name) const;

    /// A folder of mode 0700 below this one, made when it is missing.
    [[nodiscard]] std::filesystem::path subfolder(const std::string& name) const;

private:
    std::filesystem::path folder;
};

/// The whole file as bytes; empty when it cannot be read.
std::string readFile(const std::filesystem::path& path);

void writeFile(const std::filesystem::path& path, const std::string& content);

} // namespace desktop
