#include "linux/xdg/XdgLoginItems.h"

#include "linux/descriptors/ErrorText.h"
#include "linux/files/AtomicFile.h"
#include "linux/xdg/ExecLine.h"
#include "linux/xdg/FileText.h"

#include <cerrno>
#include <filesystem>
#include <span>
#include <system_error>
#include <utility>

#include <unistd.h>

namespace xdg {

namespace {

std::string entryText(const std::string& name, const std::string& program)
{
    return "[Desktop Entry]\nType=Application\nVersion=1.0\nName=" + name +
           "\nExec=" + quotedForExec(program) +
           "\nNoDisplay=true\nTerminal=false\nX-GNOME-Autostart-enabled=true\n";
}

} // namespace

XdgLoginItems::XdgLoginItems(
    const std::string& configHome,
    std::map<std::string, std::string> programs,
    platform::Report report
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
    constexpr unsigned READABLE_BY_ALL = 0644;
    if (!files::replaceFile(path, std::as_bytes(std::span(text)), READABLE_BY_ALL)) {
        report("The login item " + path + " cannot be written: " + descriptors::errorText());
    }
    return readText(path) == text;
}

bool XdgLoginItems::remove(const std::string& path) const
{
    if (::unlink(path.c_str()) == 0 || errno == ENOENT || errno == ENOTDIR) {
        return true;
    }
    report("The login item " + path + " cannot be removed: " + descriptors::errorText());
    return false;
}

} // namespace xdg
