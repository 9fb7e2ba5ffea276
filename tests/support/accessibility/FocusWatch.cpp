#include "accessibility/FocusWatch.h"

#include "accessibility/EventSource.h"

#include <cstdint>

namespace accessibility {

FocusWatch::FocusWatch(const std::string& busAddress) : listener(std::make_unique<Listener>())
{
    listener->bus = listenTo(
        busAddress,
        {.name = "object:state-changed:focused",
         .match = "type='signal',interface='org.a11y.atspi.Event.Object',"
                  "member='StateChanged',arg0='focused'"},
        noticed,
        listener.get()
    );
}

std::optional<Node> FocusWatch::last()
{
    readEvents(listener->bus);
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
