// Finds the files behind the names of programs. Keeps nothing but the folders to search, so any
// thread may call.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace xdg {

struct ProgramFile
{
    std::string path;        // free of links
    std::string interpreter; // of a script, free of links; else empty

    [[nodiscard]] bool isScript() const { return !interpreter.empty(); }
};

class ProgramResolver
{
public:
    explicit ProgramResolver(std::vector<std::string> folders) : folders(std::move(folders)) {}

    /// The file that would be executed under that name; nothing when there is none.
    [[nodiscard]] std::optional<ProgramFile> find(const std::string& name) const;

    /// Where a program of that name would be, were it installed.
    [[nodiscard]] std::vector<std::string> places(const std::string& name) const;

private:
    std::vector<std::string> folders;
};

/// The path free of links; the path itself where there is no such file.
std::string realPath(const std::string& path);

} // namespace xdg
