#include "desktop/FakeSettingsPortal.h"

#include "desktop/Failure.h"

namespace desktop {

FakeSettingsPortal::FakeSettingsPortal(const std::string& busAddress)
    : bus(connectToBus(busAddress))
{
    if (!bus || sd_bus_request_name(bus.get(), "org.freedesktop.portal.Desktop", 0) < 0) {
        throw Failure("the bus does not let anybody tell the desktop's appearance");
    }
}

void FakeSettingsPortal::prefer(Appearance appearance) const
{
    sd_bus_emit_signal(
        bus.get(),
        "/org/freedesktop/portal/desktop",
        "org.freedesktop.portal.Settings",
        "SettingChanged",
        "ssv",
        "org.freedesktop.appearance",
        "color-scheme",
        "u",
        static_cast<unsigned>(appearance)
    );
    sd_bus_flush(bus.get());
}

} // namespace desktop
