// Finds the files behind the names of programs. Keeps what it found in the folders that it
// searches, until that is forgotten. One thread at a time.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
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

    /// Told of the place of each program that is found, which may be a link.
    std::function<void(const std::string& place)> onFound;

    /// The file that would be executed under that name; nothing when there is none.
    [[nodiscard]] std::optional<ProgramFile> find(const std::string& name) const;

    /// Where a program of that name would be, were it installed.
    [[nodiscard]] std::vector<std::string> places(const std::string& name) const;

    /// Files of these names changed in the folders. False where none of them was asked for.
    bool forget(const std::set<std::string>& names);

    /// What stands elsewhere is looked for anew.
    void forgetElsewhere();
    void forgetAll();

private:
    [[nodiscard]] std::optional<ProgramFile> look(const std::string& name) const;

    std::vector<std::string> folders;
    mutable std::map<std::string, std::optional<ProgramFile>> known;
};

/// The path free of links; the path itself where there is no such file.
std::string realPath(const std::string& path);

} // namespace xdg
