#include "desktop/BusConnection.h"

#include "desktop/Failure.h"

namespace desktop {

BusConnection connectToBus(const std::string& address)
{
    sd_bus* opened = nullptr;
    if (sd_bus_new(&opened) < 0) {
        return nullptr;
    }
    BusConnection bus(opened);
    if (sd_bus_set_address(opened, address.c_str()) < 0 || sd_bus_set_bus_client(opened, 1) < 0 ||
        sd_bus_start(opened) < 0) {
        return nullptr;
    }
    return bus;
}

BusMessage callAndWait(const BusConnection& bus, const BusMessage& call)
{
    sd_bus_message* answer = nullptr;
    sd_bus_error error = SD_BUS_ERROR_NULL;
    if (sd_bus_call(bus.get(), call.get(), 0, &error, &answer) < 0) {
        const std::string words = error.message != nullptr ? error.message : "no answer";
        sd_bus_error_free(&error);
        throw Failure("bus: " + words);
    }
    return BusMessage(answer);
}

BusMessage newCall(
    const BusConnection& bus,
    const std::string& peer,
    const std::string& path,
    const std::string& interface,
    const std::string& member
)
{
    sd_bus_message* call = nullptr;
    const int made = sd_bus_message_new_method_call(
        bus.get(), &call, peer.c_str(), path.c_str(), interface.c_str(), member.c_str()
    );
    if (made < 0) {
        throw Failure("bus: no call of " + member);
    }
    return BusMessage(call);
}

} // namespace desktop
