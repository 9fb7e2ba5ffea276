// Where events come from that programs tell assistive tools. Programs that start from here on are
// heard. One thread.
#pragma once

#include "accessibility/Node.h"

#include <string>

namespace accessibility {

struct EventKind
{
    const char* name;  // as tools ask for it: "object:text-changed"
    const char* match; // what the bus is asked for
};

/// A connection that calls `noticed` with `listener` for each event of that kind, while it is
/// processed; throws `desktop::Failure` where the bus does not give it. The listener outlives it.
Node::Bus listenTo(
    const std::string& busAddress,
    const EventKind& kind,
    sd_bus_message_handler_t noticed,
    void* listener
);

/// Reads all events that have come.
void readEvents(const Node::Bus& bus);

} // namespace accessibility
