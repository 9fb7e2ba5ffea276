#include "accessibility/EventSource.h"

#include "desktop/Failure.h"

namespace accessibility {

namespace {

/// Programs tell of nothing that nobody has asked for.
void askFor(const desktop::BusConnection& bus, const char* event)
{
    const auto call = desktop::newCall(
        bus,
        "org.a11y.atspi.Registry",
        "/org/a11y/atspi/registry",
        "org.a11y.atspi.Registry",
        "RegisterEvent"
    );
    sd_bus_message_append(call.get(), "sass", event, 0, "");
    desktop::callAndWait(bus, call);
}

} // namespace

Node::Bus listenTo(
    const std::string& busAddress,
    const EventKind& kind,
    sd_bus_message_handler_t noticed,
    void* listener
)
{
    auto bus = desktop::connectToBus(busAddress);
    if (!bus || sd_bus_add_match(bus.get(), nullptr, kind.match, noticed, listener) < 0) {
        throw desktop::Failure("the accessibility bus tells of no events");
    }
    askFor(bus, kind.name);
    return std::make_shared<const desktop::BusConnection>(std::move(bus));
}

void readEvents(const Node::Bus& bus)
{
    while (sd_bus_process(bus->get(), nullptr) > 0) {
        // until all that has come is read
    }
}

} // namespace accessibility
