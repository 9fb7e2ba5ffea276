// Login items as autostart entries of the desktop. Main thread only.
#pragma once

#include "platform/LoginItems.h"
#include "platform/Report.h"

#include <map>
#include <string>

namespace xdg {

class XdgLoginItems final : public platform::LoginItems
{
public:
    /// `programs`: absolute path of the program that an identifier stands for. An identifier that
    /// is not among them can be unregistered only.
    XdgLoginItems(
        const std::string& configHome,
        std::map<std::string, std::string> programs,
        platform::Report report
    );

    bool setEnabled(const std::string& bundleIdentifier, bool enabled) override;

private:
    [[nodiscard]] bool write(const std::string& path, const std::string& text) const;
    [[nodiscard]] bool remove(const std::string& path) const;

    std::string folder;
    std::map<std::string, std::string> programs;
    platform::Report report;
};

} // namespace xdg
