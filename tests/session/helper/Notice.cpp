#include "Notice.h"

#include "desktop/BusConnection.h"
#include "linux/session/Notice.h"

bool postNotice(const std::string& address, const std::string& name, const std::string& object)
{
    const desktop::BusConnection bus = desktop::connectToBus(address);
    return bus != nullptr &&
           sd_bus_emit_signal(
               bus.get(),
               session::NOTICE_PATH,
               session::NOTICE_INTERFACE,
               session::NOTICE_MEMBER,
               "ss",
               name.c_str(),
               object.c_str()
           ) >= 0 &&
           sd_bus_flush(bus.get()) >= 0;
}
