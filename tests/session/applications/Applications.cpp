#include "session/applications/Applications.h"

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

} // namespace

std::vector<Application> applications(const std::filesystem::path& home)
{
    constexpr auto RUNS = SecondStart::Runs;
    return {
        {"program", "debian-xterm", "XTerm", "xterm", RUNS},
        {"script that becomes another application",
         "debian-uxterm",
         "UXTerm",
         "uxterm",
         RUNS,
         "",
         "XTerm"},
        {"single instance", "org.xfce.mousepad", "Mousepad", "mousepad"},
        {"program", "org.gnome.Calculator", "Calculator", "gnome-calculator", RUNS},
        {"program", "galculator", "Galculator", "galculator", RUNS},
        {"file manager", "thunar", "Thunar File Manager", "thunar"},
        {"client and server", "org.gnome.Terminal", "Terminal", "gnome-terminal"},
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
        {"JavaScript",
         "org.gnome.Characters",
         "Characters",
         "gnome-characters",
         SecondStart::HandsOver,
         "org.gnome.Characters"},
        {"Java", "jedit", "jEdit", "jedit", RUNS},
        {"closes itself to others", "org.keepassxc.KeePassXC", "KeePassXC", "keepassxc"},
        {"started by the bus",
         "org.gnome.seahorse.Application",
         "Passwords and Keys",
         "seahorse",
         SecondStart::HandsOver,
         "org.gnome.seahorse.Application"},
        {"single instance", "gnome-system-monitor", "System Monitor", "gnome-system-monitor"},
        {"program", "org.gnome.Evince", "Document Viewer", "evince", RUNS},
        boxed(home),
    };
}

} // namespace applications
