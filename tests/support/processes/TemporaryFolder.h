// A folder of its own for a test, removed with everything in it.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace processes {

class TemporaryFolder
{
public:
    TemporaryFolder()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "tarvel-XXXXXX").string();
        // The real path: what the kernel says about a process is free of links.
        folder = std::filesystem::canonical(::mkdtemp(pattern.data()));
    }

    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    TemporaryFolder(TemporaryFolder&&) = delete;
    TemporaryFolder& operator=(TemporaryFolder&&) = delete;

    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }

    [[nodiscard]] std::string path(const std::string& name = "") const
    {
        return name.empty() ? folder.string() : (folder / name).string();
    }

    /// Writes a file, with the folders above it.
    std::string write(const std::string& name, const std::string& content) const
    {
        std::filesystem::create_directories((folder / name).parent_path());
        std::ofstream(folder / name, std::ios::binary) << content;
        return path(name);
    }

    /// Writes a file that may be executed.
    std::string writeProgram(const std::string& name, const std::string& content) const
    {
        write(name, content);
        std::filesystem::permissions(folder / name, std::filesystem::perms(0755));
        return path(name);
    }

    /// Copies a program under a name of its own, so that no other process runs it.
    std::string copyProgram(const std::string& source, const std::string& name) const
    {
        std::filesystem::create_directories((folder / name).parent_path());
        std::filesystem::copy_file(source, folder / name);
        return path(name);
    }

private:
    std::filesystem::path folder;
};

} // namespace processes
