// The desktop on which tests ask which application a process is: entries as real desktops have
// them, and what each of them executes.
#pragma once

#include "linux/xdg/Catalogue.h"

#include <string>
#include <utility>
#include <vector>

namespace xdg_tests {

using Words = std::vector<std::string>;
using Kind = xdg::ExecutionKey::Kind;

inline constexpr auto PYTHON = "/usr/bin/python3.11";
inline constexpr auto DASH = "/usr/bin/dash";
inline constexpr auto BASH = "/usr/bin/bash";
inline constexpr auto LOADER = "/usr/lib/x86_64-linux-gnu/ld-linux-x86-64.so.2";
inline constexpr auto SOFFICE = "/usr/lib/libreoffice/program/soffice";
inline constexpr auto JAVA = "/usr/lib/jvm/java-17-openjdk-amd64/bin/java";

inline xdg::ExecutionKey executable(const std::string& path, Words fixed = {})
{
    return {Kind::Executable, path, std::move(fixed), false, ""};
}

inline xdg::ExecutionKey script(const std::string& path, Words fixed = {})
{
    return {Kind::Script, path, std::move(fixed), false, ""};
}

inline xdg::ExecutionKey
shared(const std::string& path, Words fixed, const std::string& invokedAs = "")
{
    return {Kind::Executable, path, std::move(fixed), true, invokedAs};
}

inline xdg::ExecutionKey sharedScript(const std::string& path, Words fixed)
{
    return {Kind::Script, path, std::move(fixed), true, ""};
}

/// How an application stands on the desktop of the tests.
struct Entry
{
    std::string id;
    std::vector<xdg::ExecutionKey> keys;
    bool shown = true;
    bool chosen = false;
    bool homemade = false;
};

inline std::vector<Entry> desktopEntries()
{
    return {
        {"chromium", {script("/usr/bin/chromium")}},
        {"org.gnome.Maps", {shared("/usr/bin/flatpak", {"run", "org.gnome.Maps"})}},
        {"debian-uxterm", {script("/usr/bin/uxterm")}},
        {"debian-xterm", {executable("/usr/bin/xterm")}},
        {"firefox-esr", {executable("/usr/lib/firefox-esr/firefox-esr")}},
        {"firefox_firefox", {shared("/usr/bin/snap", {}, "firefox")}},
        {"galculator", {executable("/usr/bin/galculator")}},
        {"gnome-system-monitor", {executable("/usr/bin/gnome-system-monitor")}},
        {"gnome-system-monitor-kde", {executable("/usr/bin/gnome-system-monitor")}, false},
        {"jar-tool", {script("/opt/tool/tool.jar")}},
        {"libreoffice-calc", {script(SOFFICE, {"--calc"})}},
        {"libreoffice-startcenter", {script(SOFFICE)}},
        {"libreoffice-writer", {script(SOFFICE, {"--writer"})}},
        {"org.gnome.Calculator", {executable("/usr/bin/gnome-calculator")}},
        {"org.gnome.Characters", {script("/usr/share/org.gnome.Characters/org.gnome.Characters")}},
        {"org.gnome.Evince", {executable("/usr/bin/evince")}},
        {"org.gnome.Meld", {script("/usr/bin/meld")}},
        {"org.gnome.Terminal",
         {executable("/usr/bin/gnome-terminal"), executable("/usr/libexec/gnome-terminal-server")}},
        {"org.gnome.Terminal.Preferences",
         {executable("/usr/bin/gnome-terminal", {"--preferences"})},
         false},
        {"org.keepassxc.KeePassXC", {executable("/usr/bin/keepassxc")}},
        {"org.videolan.VLC", {shared("/usr/bin/flatpak", {"run", "org.videolan.VLC"})}},
        {"pdf-from-wine", {sharedScript("/usr/bin/wine-stable", {"/home/u/pdf.exe"})}},
        {"thunar", {executable("/usr/bin/thunar")}},
        {"thunar-bulk-rename", {executable("/usr/bin/thunar", {"--bulk-rename"})}, false},
        {"twin-a", {executable("/usr/bin/twin")}},
        {"twin-b", {executable("/usr/bin/twin")}},
        {"wrapped", {executable("/opt/wrapped/bin/wrapped")}},
        // The user's own: a profile of the terminal, and entries meant to hide chosen applications.
        {"zz-hides-keepassxc",
         {executable("/usr/bin/keepassxc", {"--minimized"})},
         true,
         false,
         true},
        {"zz-own-profile", {executable("/usr/bin/xterm", {"-T", "work"})}, true, false, true},
    };
}

} // namespace xdg_tests
