#include "Notice.h"

#include "desktop/BusConnection.h"

bool postNotice(const std::string& address, const std::string& name, const std::string& object)
{
    const desktop::BusConnection bus = desktop::connectToBus(address);
    return bus != nullptr &&
           sd_bus_emit_signal(
               bus.get(),
               "/com/quorvent/DistributedNotification",
               "com.quorvent.DistributedNotification",
               "Posted",
               "ss",
               name.c_str(),
               object.c_str()
           ) >= 0 &&
           sd_bus_flush(bus.get()) >= 0;
}
