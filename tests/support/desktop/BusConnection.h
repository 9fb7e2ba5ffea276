// A connection to a message bus at an address, for a few calls. One thread at a time.
#pragma once

#include <memory>
#include <string>

#include <systemd/sd-bus.h>

namespace desktop {

struct BusDeleter
{
    void operator()(sd_bus* bus) const { sd_bus_close_unref(bus); }

    void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};

using BusConnection = std::unique_ptr<sd_bus, BusDeleter>;
using BusMessage = std::unique_ptr<sd_bus_message, BusDeleter>;

/// Empty when nobody answers there.
BusConnection connectToBus(const std::string& address);

/// The answer; throws `Failure` with the peer's words when it is an error.
BusMessage callAndWait(const BusConnection& bus, const BusMessage& call);

/// A call to be filled with arguments.
BusMessage newCall(
    const BusConnection& bus,
    const std::string& peer,
    const std::string& path,
    const std::string& interface,
    const std::string& member
);

} // namespace desktop
