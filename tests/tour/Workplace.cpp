#include "tour/Workplace.h"

#include "agent/AgentSession.h"
#include "desktop/Failure.h"
#include "desktop/TemporaryFolder.h"

#include <filesystem>
#include <string>
#include <vector>

namespace tour {

namespace fs = std::filesystem;

namespace {

struct Program
{
    std::string title;
    std::string command;
    fs::path entry; // desktop entry
};

/// Tarvel too: whoever quits it may want it back.
std::vector<Program> programs(const desktop::Desktop& desktop)
{
    const fs::path installed = "/usr/share/applications";
    const std::string agent = agent::AgentSession::agentPath();
    const fs::path icon = fs::read_symlink("/proc/self/exe").parent_path() / "ApplicationIcon.svg";
    const fs::path entry = desktop.folder() / "Tarvel.desktop";
    desktop::writeFile(
        entry,
        "[Desktop Entry]\nType=Application\nName=Tarvel\nExec=" + agent +
            "\nIcon=" + icon.string() + "\n"
    );
    return {
        {"Terminal", "xterm", installed / "debian-xterm.desktop"},
        {"Calculator", "galculator", installed / "galculator.desktop"},
        {"Text Editor", "mousepad", installed / "org.xfce.mousepad.desktop"},
        {"Tarvel", agent, entry}};
}

void writeMenu(const desktop::Desktop& desktop)
{
    std::string text = "<openbox_menu>\n<menu id=\"root-menu\" label=\"Applications\">\n";
    for (const Program& program : programs(desktop)) {
        text += "<item label=\"" + program.title + "\"><action name=\"Execute\"><command>" +
                program.command + "</command></action></item>\n";
    }
    desktop::writeFile(
        desktop.home() / ".config/openbox/menu.xml", text + "</menu>\n</openbox_menu>\n"
    );
}

void readMenu(desktop::Desktop& desktop)
{
    desktop::ChildProcess request = desktop.start({"openbox", "--reconfigure"});
    if (request.waitForExitStatus(agent::PATIENCE) != 0) {
        throw desktop::Failure("the window manager does not take its menu");
    }
}

fs::path writePanel(const desktop::Desktop& desktop)
{
    const fs::path path = desktop.folder() / "tint2rc";
    std::string text = "rounded = 0\nbackground_color = #e6e6e6 100\n" // 1, the panel
                       "rounded = 4\nbackground_color = #000000 8\n"   // 2, a window
                       "rounded = 4\nbackground_color = #000000 16\n"  // 3, the active one
                       "panel_items = LTSC\npanel_size = 100% 40\npanel_background_id = 1\n"
                       "panel_position = bottom center horizontal\npanel_padding = 8 0 8\n"
                       "launcher_icon_size = 28\nlauncher_padding = 4 4 8\nlauncher_tooltip = 1\n"
                       "launcher_icon_theme = Adwaita\n"
                       "task_font = sans 9\ntask_font_color = #202428 100\ntask_padding = 8 4 8\n"
                       "task_maximum_size = 200 32\ntask_background_id = 2\n"
                       "task_active_background_id = 3\nmouse_left = toggle_iconify\n"
                       "systray_padding = 8 4 8\nsystray_icon_size = 24\n"
                       "time1_format = %H:%M\ntime1_font = sans 10\n"
                       "clock_font_color = #202428 100\nclock_padding = 8 0\n";
    for (const Program& program : programs(desktop)) {
        text += "launcher_item_app = " + program.entry.string() + "\n";
    }
    desktop::writeFile(path, text);
    return path;
}

desktop::ChildProcess layOut(desktop::Desktop& desktop)
{
    writeMenu(desktop);
    readMenu(desktop);
    return desktop.start({"tint2", "-c", writePanel(desktop).string()});
}

} // namespace

Workplace::Workplace(desktop::Desktop& desktop) : panel(layOut(desktop)) {}

} // namespace tour
