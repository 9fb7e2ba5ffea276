#include "desktop/StatusPanel.h"

#include "desktop/BusConnection.h"
#include "desktop/Failure.h"
#include "desktop/TemporaryFolder.h"
#include "desktop/Wait.h"

#include <iomanip>
#include <sstream>
#include <string>

namespace desktop {

namespace {

constexpr std::chrono::seconds TIMEOUT{30};
constexpr int PANEL = 32;
constexpr int ICON = 24;
constexpr auto WATCHER = "org.kde.StatusNotifierWatcher";

std::string inWords(Pixel colour)
{
    std::ostringstream text;
    text << '#' << std::hex << std::setw(6) << std::setfill('0') << colour;
    return text.str();
}

ChildProcess startTint2(Desktop& desktop, Pixel ground, int scale)
{
    const auto configuration = desktop.home() / "tint2rc";
    writeFile(
        configuration,
        "panel_items = S\npanel_size = 100% " + std::to_string(PANEL * scale) +
            "\npanel_position = bottom left horizontal\npanel_padding = 0 0 0\n"
            "systray_padding = 0 0 0\nsystray_icon_size = " +
            std::to_string(ICON * scale) + "\nrounded = 0\nbackground_color = " + inWords(ground) +
            " 100\npanel_background_id = 1\n"
    );
    return desktop.start({"tint2", "-c", configuration.string()});
}

ChildProcess startLxqtPanel(Desktop& desktop, Pixel ground)
{
    const auto folder = desktop.home() / ".config/lxqt";
    std::filesystem::create_directories(folder);
    writeFile(
        folder / "panel.conf",
        "panels=panel1\n[panel1]\nplugins=statusnotifier\nposition=Bottom\ndesktop=0\n"
        "panelSize=32\niconSize=22\nbackground-color=" +
            inWords(ground) + "\n[statusnotifier]\nalignment=Left\ntype=statusnotifier\n"
    );
    return desktop.start({"lxqt-panel"});
}

bool hasTray(XConnection& connection)
{
    const Reply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        connection.get(),
        xcb_get_selection_owner(connection.get(), connection.atom("_NET_SYSTEM_TRAY_S0")),
        nullptr
    ));
    return reply && reply->owner != XCB_NONE;
}

bool hasHost(PrivateBus& sessionBus)
{
    if (!sessionBus.hasOwner(WATCHER)) {
        return false;
    }
    const auto bus = connectToBus(sessionBus.address());
    const auto call =
        newCall(bus, WATCHER, "/StatusNotifierWatcher", "org.freedesktop.DBus.Properties", "Get");
    int host = 0;
    try {
        sd_bus_message_append(call.get(), "ss", WATCHER, "IsStatusNotifierHostRegistered");
        sd_bus_message_read(callAndWait(bus, call).get(), "v", "b", &host);
    } catch (const Failure&) {
        return false;
    }
    return host != 0;
}

} // namespace

StatusPanel::StatusPanel(Desktop& desktop, Kind kind, Pixel ground, int scale)
    : panel(
          kind == Kind::SystemTray ? startTint2(desktop, ground, scale)
                                   : startLxqtPanel(desktop, ground)
      )
{
    const bool isTray = kind == Kind::SystemTray;
    const std::string name = isTray ? "Tint2" : "lxqt-panel";
    const bool isUp = waitUntil(
        [&] {
            const xcb_window_t window = desktop.windows().ofClass(name);
            if (window == XCB_NONE || !desktop.windows().isViewable(window) ||
                !(isTray ? hasTray(desktop.connection()) : hasHost(desktop.bus()))) {
                return false;
            }
            const Rectangle place = desktop.windows().placeOf(window);
            first = {place.x, place.y, place.height, place.height};
            return capture(desktop.connection(), place).contains(ground);
        },
        TIMEOUT
    );
    if (!isUp) {
        throw Failure("no status area comes with " + name);
    }
}

} // namespace desktop
