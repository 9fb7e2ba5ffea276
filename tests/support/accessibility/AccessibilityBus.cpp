#include "accessibility/AccessibilityBus.h"

#include "desktop/BusConnection.h"
#include "desktop/Failure.h"
#include "desktop/Wait.h"

#include <chrono>

namespace accessibility {

namespace {

constexpr std::chrono::seconds TIMEOUT{30};
constexpr auto SERVICE = "org.a11y.Bus";
constexpr auto SERVICE_PATH = "/org/a11y/bus";
constexpr auto REGISTRY = "org.a11y.atspi.Registry";
constexpr auto ROOT = "/org/a11y/atspi/accessible/root";

/// Programs show themselves only where somebody is said to look.
void announceAssistiveTools(const desktop::BusConnection& session)
{
    const auto call =
        desktop::newCall(session, SERVICE, SERVICE_PATH, "org.freedesktop.DBus.Properties", "Set");
    sd_bus_message_append(call.get(), "ssv", "org.a11y.Status", "IsEnabled", "b", 1);
    desktop::callAndWait(session, call);
}

std::string addressFrom(const desktop::BusConnection& session)
{
    const auto call = desktop::newCall(session, SERVICE, SERVICE_PATH, SERVICE, "GetAddress");
    const auto answer = desktop::callAndWait(session, call);
    const char* address = nullptr;
    if (sd_bus_message_read(answer.get(), "s", &address) < 0) {
        throw desktop::Failure("the accessibility bus has no address");
    }
    return address;
}

desktop::BusConnection open(const std::string& address)
{
    desktop::BusConnection bus = desktop::connectToBus(address);
    if (!bus) {
        throw desktop::Failure("nobody answers on the accessibility bus");
    }
    return bus;
}

} // namespace

AccessibilityBus::AccessibilityBus(desktop::Desktop& desktop)
    : launcher(desktop.start({"/usr/libexec/at-spi-bus-launcher", "--launch-immediately"}))
{
    const bool isUp =
        desktop::waitUntil([&desktop] { return desktop.bus().hasOwner(SERVICE); }, TIMEOUT);
    if (!isUp) {
        throw desktop::Failure("the accessibility bus does not come up");
    }
    const auto session = desktop::connectToBus(desktop.bus().address());
    busAddress = addressFrom(session);
    bus = std::make_shared<const desktop::BusConnection>(open(busAddress));
    if (!desktop::waitUntil([this] { return hasRegistry(); }, TIMEOUT)) {
        throw desktop::Failure("the registry of the accessibility bus does not come up");
    }
    announceAssistiveTools(session);
}

/// The question starts the registry; one that comes up beside another may leave without an answer.
bool AccessibilityBus::hasRegistry() const
{
    try {
        static_cast<void>(programs());
        return true;
    } catch (const desktop::Failure&) {
        return false;
    }
}

std::vector<Node> AccessibilityBus::programs() const
{
    return Node(bus, REGISTRY, ROOT).children();
}

} // namespace accessibility
