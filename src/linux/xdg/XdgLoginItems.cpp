#include "linux/xdg/XdgLoginItems.h"

#include "linux/proc/FileDescriptor.h"
#include "linux/xdg/ExecLine.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace xdg {

namespace {

std::string entryText(const std::string& name, const std::string& program)
{
    return "[Desktop Entry]\nType=Application\nVersion=1.0\nName=" + name +
           "\nExec=" + quotedForExec(program) +
           "\nNoDisplay=true\nTerminal=false\nX-GNOME-Autostart-enabled=true\n";
}

/// All of it on the disk, or false.
bool writeWhole(const std::string& path, const std::string& text)
{
    const proc::FileDescriptor file(
        ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0644)
    );
    std::size_t written = 0;
    while (file.valid() && written < text.size()) {
        const ssize_t size = ::write(file.get(), text.data() + written, text.size() - written);
        if (size < 0 && errno == EINTR) {
            continue;
        }
        if (size <= 0) {
            return false;
        }
        written += static_cast<std::size_t>(size);
    }
    return file.valid() && ::fsync(file.get()) == 0;
}

std::string reasonOf(int error)
{
    return std::generic_category().message(error);
}

} // namespace

XdgLoginItems::XdgLoginItems(
    const std::string& configHome, std::map<std::string, std::string> programs, proc::Report report
)
    : folder(configHome + "/autostart"),
      programs(std::move(programs)),
      report(std::move(report))
{
}

bool XdgLoginItems::setEnabled(const std::string& bundleIdentifier, bool enabled)
{
    const std::string path = folder + "/" + bundleIdentifier + ".desktop";
    if (!enabled) {
        return remove(path);
    }
    const auto program = programs.find(bundleIdentifier);
    if (program == programs.end()) {
        report("No program is known for the login item " + bundleIdentifier);
        return false;
    }
    const std::string name = bundleIdentifier.substr(bundleIdentifier.rfind('.') + 1);
    return write(path, entryText(name, program->second));
}

bool XdgLoginItems::write(const std::string& path, const std::string& text) const
{
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    const std::string temporary = path + ".new";
    const bool written =
        writeWhole(temporary, text) && ::rename(temporary.c_str(), path.c_str()) == 0;
    if (!written) {
        const std::string reason = reasonOf(errno);
        ::unlink(temporary.c_str());
        report("The login item " + path + " cannot be written: " + reason);
    }
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str() == text;
}

bool XdgLoginItems::remove(const std::string& path) const
{
    if (::unlink(path.c_str()) == 0 || errno == ENOENT || errno == ENOTDIR) {
        return true;
    }
    report("The login item " + path + " cannot be removed: " + reasonOf(errno));
    return false;
}

} // namespace xdg
