#include "desktop/WindowFrames.h"

#include "desktop/Failure.h"
#include "desktop/TemporaryFolder.h"

#include <algorithm>
#include <cstdlib>
#include <iomanip>
#include <sstream>
#include <string>

namespace desktop {

namespace {

constexpr auto SYSTEM_CONFIGURATION = "/etc/xdg/openbox/rc.xml";
constexpr int CROSS = 9;   // pixels
constexpr int FONT = 9;    // points
constexpr int PADDING = 6; // pixels
constexpr int BYTE = 8;    // bits

void replaceAll(std::string& text, const std::string& what, const std::string& with)
{
    for (std::size_t at = text.find(what); at != std::string::npos;
         at = text.find(what, at + with.size())) {
        text.replace(at, what.size(), with);
    }
}

/// What Debian configures, keys and mouse included, with another look.
std::string configuration(int scale)
{
    std::string text = readFile(SYSTEM_CONFIGURATION);
    if (text.empty()) {
        throw Failure("openbox has no configuration");
    }
    replaceAll(text, "<name>Clearlooks</name>", "<name>Plain</name>");
    replaceAll(text, "<titleLayout>NLIMC</titleLayout>", "<titleLayout>LC</titleLayout>");
    for (const int size : {8, FONT}) {
        replaceAll(
            text,
            "<size>" + std::to_string(size) + "</size>",
            "<size >" + std::to_string(FONT * scale) + "</size>"
        );
    }
    return text;
}

std::string theme(int scale)
{
    std::ostringstream text;
    text << "border.width: " << scale << "\npadding.width: " << PADDING * scale
         << "\npadding.height: " << PADDING * scale
         << "\nwindow.handle.width: 0\nwindow.client.padding.width: 0\n"
            "window.client.padding.height: 0\n"
            "window.*.border.color: #1b1c1f\nwindow.*.title.separator.color: #5e616a\n"
            "window.*.title.bg: flat solid\nwindow.active.title.bg.color: #5e616a\n"
            "window.inactive.title.bg.color: #4a4d55\n"
            "window.label.text.justify: center\nwindow.*.label.bg: parentrelative\n"
            "window.active.label.text.color: #f2f3f5\n"
            "window.inactive.label.text.color: #b4b7be\n"
            "window.*.button.*.bg: parentrelative\n"
            "window.active.button.*.image.color: #f2f3f5\n"
            "window.inactive.button.*.image.color: #b4b7be\n"
            "menu.border.color: #1b1c1f\nmenu.border.width: "
         << scale
         << "\nmenu.title.bg: flat solid\nmenu.title.bg.color: #5e616a\n"
            "menu.title.text.color: #f2f3f5\nmenu.title.text.justify: left\n"
            "menu.items.bg: flat solid\nmenu.items.bg.color: #2a2b2f\n"
            "menu.items.text.color: #f2f3f5\nmenu.items.disabled.text.color: #8a8d94\n"
            "menu.items.active.bg: flat solid\nmenu.items.active.bg.color: #3366cc\n"
            "menu.items.active.text.color: #ffffff\n";
    return text.str();
}

/// A picture as the window manager reads it: rows of bits, the lowest bit leftmost.
std::string cross(int scale)
{
    const int size = CROSS * scale;
    std::ostringstream text;
    text << "#define close_width " << size << "\n#define close_height " << size
         << "\nstatic unsigned char close_bits[] = {" << std::hex;
    for (int row = 0; row < size; ++row) {
        for (int first = 0; first < size; first += BYTE) {
            unsigned bits = 0;
            for (int column = first; column < std::min(first + BYTE, size); ++column) {
                const bool isOnLine =
                    std::abs(row - column) < scale || std::abs(row + column - (size - 1)) < scale;
                bits |= isOnLine ? 1U << static_cast<unsigned>(column - first) : 0U;
            }
            text << "0x" << std::setw(2) << std::setfill('0') << bits << ", ";
        }
    }
    text << "};\n";
    return text.str();
}

} // namespace

void styleWindowFrames(const std::filesystem::path& home, int scale)
{
    const auto look = home / ".local/share/themes/Plain/openbox-3";
    std::filesystem::create_directories(look);
    writeFile(look / "themerc", theme(scale));
    writeFile(look / "close.xbm", cross(scale));
    std::filesystem::create_directories(home / ".config/openbox");
    writeFile(home / ".config/openbox/rc.xml", configuration(scale));
}

} // namespace desktop
