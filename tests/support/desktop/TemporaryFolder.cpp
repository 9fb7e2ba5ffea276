#include "desktop/TemporaryFolder.h"

#include "desktop/Failure.h"

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <system_error>

namespace desktop {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder()
{
    // A short path: sockets are made in it, and their names end at 107 bytes.
    std::string pattern = "/tmp/tarvel-XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) {
        throw Failure("no temporary folder");
    }
    folder = fs::canonical(pattern);
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code error;
    // Tests take permissions away from folders; removal needs them back.
    for (fs::recursive_directory_iterator at(folder, error), end; at != end; at.increment(error)) {
        if (at->is_directory(error) && !at->is_symlink(error)) {
            fs::permissions(at->path(), fs::perms::owner_all, error);
        }
    }
    fs::remove_all(folder, error);
}

fs::path TemporaryFolder::subfolder(const std::string& name) const
{
    fs::path path = folder / name;
    fs::create_directories(path);
    fs::permissions(path, fs::perms::owner_all);
    return path;
}

std::string TemporaryFolder::write(const std::string& name, const std::string& content) const
{
    writeFile(folder / name, content);
    return path(name);
}

std::string TemporaryFolder::writeProgram(const std::string& name, const std::string& content) const
{
    write(name, content);
    fs::permissions(folder / name, fs::perms(0755));
    return path(name);
}

std::string TemporaryFolder::copyProgram(const std::string& source, const std::string& name) const
{
    fs::create_directories((folder / name).parent_path());
    fs::copy_file(source, folder / name);
    return path(name);
}

std::string readFile(const fs::path& path)
{
    std::ifstream stream(path, std::ios::binary);
    std::ostringstream content;
    content << stream.rdbuf();
    return content.str();
}

void writeFile(const fs::path& path, const std::string& content)
{
    fs::create_directories(path.parent_path());
    std::ofstream stream(path, std::ios::binary | std::ios::trunc);
    stream << content;
    if (!stream.flush()) {
        throw Failure("cannot write " + path.string());
    }
}

} // namespace desktop
