#include "linux/xdg/ProgramResolver.h"

#include "linux/files/Names.h"
#include "platform/Call.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstdlib>
#include <fstream>
#include <string_view>

#include <sys/stat.h>
#include <unistd.h>

namespace xdg {

namespace {

bool isProgram(const std::string& path)
{
    struct stat status
    {
    };

    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
           ::access(path.c_str(), X_OK) == 0;
}

/// The program after "#!"; empty for a file that is no script.
std::string interpreterOf(const std::string& path)
{
    std::array<char, 256> line{};
    std::ifstream file(path, std::ios::binary);
    file.read(line.data(), line.size());
    std::string_view text(line.data(), static_cast<std::size_t>(file.gcount()));
    text = text.substr(0, text.find('\n'));
    if (!text.starts_with("#!")) {
        return {};
    }
    constexpr std::string_view BLANKS = " \t\r";
    text.remove_prefix(std::min(text.find_first_not_of(BLANKS, 2), text.size()));
    const std::string_view program = text.substr(0, text.find_first_of(BLANKS));
    return program.empty() ? std::string("/bin/sh") : std::string(program);
}

} // namespace

std::string realPath(const std::string& path)
{
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): realpath fills it
    std::array<char, PATH_MAX> real;
    return ::realpath(path.c_str(), real.data()) == nullptr ? path : std::string(real.data());
}

std::optional<ProgramFile> ProgramResolver::find(const std::string& name) const
{
    const auto found = known.find(name);
    return found != known.end() ? found->second : known[name] = look(name);
}

std::optional<ProgramFile> ProgramResolver::look(const std::string& name) const
{
    for (const std::string& place : places(name)) {
        if (isProgram(place)) {
            platform::call(onFound, place);
            const std::string path = realPath(place);
            const std::string interpreter = interpreterOf(path);
            return ProgramFile{path, interpreter.empty() ? "" : realPath(interpreter)};
        }
    }
    return std::nullopt;
}

std::vector<std::string> ProgramResolver::places(const std::string& name) const
{
    if (name.empty() || name.find('/') != std::string::npos) {
        return name.starts_with('/') ? std::vector{name} : std::vector<std::string>();
    }
    std::vector<std::string> result;
    result.reserve(folders.size());
    for (const std::string& folder : folders) {
        std::string place = folder;
        result.push_back(place.append("/").append(name));
    }
    return result;
}

bool ProgramResolver::forget(const std::set<std::string>& names)
{
    return std::erase_if(known, [&](const auto& entry) {
               return names.contains(std::string(files::baseName(entry.first)));
           }) > 0;
}

void ProgramResolver::forgetElsewhere()
{
    std::erase_if(known, [this](const auto& entry) {
        const std::size_t slash = entry.first.rfind('/');
        return slash != std::string::npos &&
               std::find(folders.begin(), folders.end(), entry.first.substr(0, slash)) ==
                   folders.end();
    });
}

void ProgramResolver::forgetAll()
{
    known.clear();
}

} // namespace xdg
