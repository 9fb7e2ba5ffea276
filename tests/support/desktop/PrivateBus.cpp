#include "desktop/PrivateBus.h"

#include "desktop/BusConnection.h"
#include "desktop/Failure.h"
#include "desktop/TemporaryFolder.h"
#include "desktop/Wait.h"

namespace desktop {

namespace {

bool isOwned(const std::string& address, const std::string& busName)
{
    const auto bus = connectToBus(address);
    if (!bus) {
        return false;
    }
    const auto call = newCall(
        bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "NameHasOwner"
    );
    int owned = 0;
    try {
        sd_bus_message_append(call.get(), "s", busName.c_str());
        sd_bus_message_read(callAndWait(bus, call).get(), "b", &owned);
    } catch (const Failure&) {
        return false;
    }
    return owned != 0;
}

std::filesystem::path writeConfiguration(
    const std::filesystem::path& folder,
    const std::string& address,
    const std::filesystem::path& services
)
{
    std::string text = "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration "
                       "1.0//EN\" \"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">"
                       "\n<busconfig><type>session</type><listen>" +
                       address + "</listen>";
    if (!services.empty()) {
        text += "<servicedir>" + services.string() + "</servicedir>";
    }
    text += "<policy context=\"default\"><allow send_destination=\"*\" eavesdrop=\"true\"/>"
            "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>\n";
    std::filesystem::path path = folder / "bus.conf";
    writeFile(path, text);
    return path;
}

} // namespace

PrivateBus::PrivateBus(
    const std::filesystem::path& folder,
    const Environment& environment,
    const std::filesystem::path& services
)
    : busAddress("unix:path=" + (folder / "bus").string()),
      daemon(
          {.arguments =
               {"dbus-daemon",
                "--nofork",
                "--nopidfile",
                "--nosyslog",
                "--config-file=" + writeConfiguration(folder, busAddress, services).string()},
           .environment = environment,
           .error = folder / "bus.log"}
      )
{
    const bool up =
        waitUntil([this] { return hasOwner("org.freedesktop.DBus"); }, std::chrono::seconds(20));
    if (!up) {
        throw Failure("the bus does not come up: " + readFile(folder / "bus.log"));
    }
}

bool PrivateBus::hasOwner(const std::string& busName) const
{
    return isOwned(busAddress, busName);
}

} // namespace desktop
