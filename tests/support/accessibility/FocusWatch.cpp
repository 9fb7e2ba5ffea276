#include "accessibility/FocusWatch.h"

#include "desktop/Failure.h"

#include <cstdint>
#include <string_view>

namespace accessibility {

namespace {

constexpr auto MATCH = "type='signal',interface='org.a11y.atspi.Event.Object',"
                       "member='StateChanged',arg0='focused'";

/// Programs tell of nothing that nobody has asked for.
void askForEvents(const desktop::BusConnection& bus)
{
    const auto call = desktop::newCall(
        bus,
        "org.a11y.atspi.Registry",
        "/org/a11y/atspi/registry",
        "org.a11y.atspi.Registry",
        "RegisterEvent"
    );
    sd_bus_message_append(call.get(), "sass", "object:state-changed:focused", 0, "");
    desktop::callAndWait(bus, call);
}

} // namespace

FocusWatch::FocusWatch(const std::string& busAddress) : listener(std::make_unique<Listener>())
{
    auto bus = desktop::connectToBus(busAddress);
    if (!bus || sd_bus_add_match(bus.get(), nullptr, MATCH, noticed, listener.get()) < 0) {
        throw desktop::Failure("the accessibility bus tells of no events");
    }
    askForEvents(bus);
    listener->bus = std::make_shared<const desktop::BusConnection>(std::move(bus));
}

std::optional<Node> FocusWatch::last()
{
    while (sd_bus_process(listener->bus->get(), nullptr) > 0) {
        // until all that has come is read
    }
    return listener->last;
}

int FocusWatch::noticed(sd_bus_message* message, void* listener, sd_bus_error* /*error*/)
{
    const char* state = nullptr;
    std::int32_t isSet = 0;
    if (sd_bus_message_read(message, "si", &state, &isSet) >= 0 && isSet != 0) {
        auto& own = *static_cast<Listener*>(listener);
        own.last.emplace(
            own.bus, sd_bus_message_get_sender(message), sd_bus_message_get_path(message)
        );
    }
    return 0;
}

} // namespace accessibility
