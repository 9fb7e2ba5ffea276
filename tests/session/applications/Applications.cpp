#include "session/applications/Applications.h"

#include <algorithm>

namespace applications {

namespace {

/// Its program is a copy that nothing else is known by.
Application boxed(const std::filesystem::path& home)
{
    const std::string command =
        "bwrap --dev-bind / / --unshare-pid --proc /proc " + (home / "boxed-calculator").string();
    return {
        .kind = "in a sandbox",
        .id = "boxed",
        .name = "Boxed calculator",
        .command = command,
        .second = SecondStart::Runs,
        .entry =
            "[Desktop Entry]\nType=Application\nName=Boxed calculator\nExec=" + command + "\n"};
}

/// As the bus starts what has an entry that says so.
std::vector<std::string> activation(const std::string& busName)
{
    std::string path = "/" + busName;
    std::replace(path.begin(), path.end(), '.', '/');
    return {busName, path, "org.freedesktop.Application.Activate", "@a{sv} {}"};
}

/// Its activation shows nothing; this is what its own client asks for.
std::vector<std::string> newTerminal(const std::string& displayName)
{
    return {
        "org.gnome.Terminal",
        "/org/gnome/Terminal/Factory0",
        "org.gnome.Terminal.Factory0.CreateInstance",
        "@a{sv} {'display': <b'" + displayName + "'>}"};
}

/// As any program asks for a folder to be shown.
std::vector<std::string> shownFolder()
{
    constexpr auto INTERFACE = "org.freedesktop.FileManager1";
    return {
        INTERFACE,
        "/org/freedesktop/FileManager1",
        std::string(INTERFACE) + ".ShowFolders",
        "@as ['file:///usr']",
        ""};
}

/// A service that executes the application for a document.
std::vector<std::string> openedDocument()
{
    constexpr auto INTERFACE = "org.gnome.evince.Daemon";
    return {
        INTERFACE,
        "/org/gnome/evince/Daemon",
        std::string(INTERFACE) + ".FindDocument",
        "file:///document.pdf",
        "true"};
}

} // namespace

std::vector<Application>
applications(const std::filesystem::path& home, const std::string& displayName)
{
    constexpr auto RUNS = SecondStart::Runs;
    return {
        {"program", "debian-xterm", "XTerm", "xterm", RUNS},
        {"script that becomes another application",
         "debian-uxterm",
         "UXTerm",
         "uxterm",
         RUNS,
         "XTerm"},
        {"single instance", "org.xfce.mousepad", "Mousepad", "mousepad"},
        {"program", "org.gnome.Calculator", "Calculator", "gnome-calculator", RUNS},
        {"program", "galculator", "Galculator", "galculator", RUNS},
        {.kind = "file manager",
         .id = "thunar",
         .name = "Thunar File Manager",
         .command = "thunar",
         .busCall = shownFolder()},
        {.kind = "client and server",
         .id = "org.gnome.Terminal",
         .name = "Terminal",
         .command = "gnome-terminal",
         .busCall = newTerminal(displayName)},
        {"single instance", "xfce4-terminal", "Xfce Terminal", "xfce4-terminal"},
        {"single instance", "lxterminal", "LXTerminal", "lxterminal"},
        {"program", "qterminal", "QTerminal", "qterminal", RUNS},
        {"many processes", "firefox-esr", "Firefox ESR", "/usr/lib/firefox-esr/firefox-esr"},
        {.kind = "script, many processes",
         .id = "chromium",
         .name = "Chromium Web Browser",
         .command = "chromium",
         .refusesRoot = true},
        {"script, one program for several",
         "libreoffice-calc",
         "LibreOffice Calc",
         "libreoffice --calc"},
        {"Python", "org.gnome.Meld", "Meld", "meld"},
        {.kind = "JavaScript",
         .id = "org.gnome.Characters",
         .name = "Characters",
         .command = "gnome-characters",
         .busCall = activation("org.gnome.Characters")},
        {"Java, single instance", "jedit", "jEdit", "jedit"},
        {"closes itself to others", "org.keepassxc.KeePassXC", "KeePassXC", "keepassxc"},
        {.kind = "started by the bus",
         .id = "org.gnome.seahorse.Application",
         .name = "Passwords and Keys",
         .command = "seahorse",
         .busCall = activation("org.gnome.seahorse.Application")},
        {"single instance", "gnome-system-monitor", "System Monitor", "gnome-system-monitor"},
        {.kind = "program",
         .id = "org.gnome.Evince",
         .name = "Document Viewer",
         .command = "evince",
         .second = RUNS,
         .busCall = openedDocument()},
        boxed(home),
    };
}

} // namespace applications
