#include "FakeNotifications.h"

#include "desktop/Failure.h"

#include <cstdint>

namespace {

constexpr auto NAME = "org.freedesktop.Notifications";
constexpr auto PATH = "/org/freedesktop/Notifications";

} // namespace

FakeNotifications::FakeNotifications(const std::string& address)
    : bus(desktop::connectToBus(address))
{
    const int result =
        bus == nullptr ? -1 : sd_bus_add_object(bus.get(), nullptr, PATH, &notify, this);
    if (result < 0 || sd_bus_request_name(bus.get(), NAME, 0) < 0) {
        throw desktop::Failure("no notification service");
    }
}

bool FakeNotifications::hasShown(std::size_t number)
{
    while (sd_bus_process(bus.get(), nullptr) > 0) {
    }
    return shown.size() >= number;
}

int FakeNotifications::notify(sd_bus_message* call, void* self, sd_bus_error* /*error*/)
{
    if (sd_bus_message_is_method_call(call, NAME, "Notify") <= 0) {
        return 0;
    }
    const char* program = nullptr;
    const char* icon = nullptr;
    const char* title = nullptr;
    const char* text = nullptr;
    std::uint32_t replaced = 0;
    if (sd_bus_message_read(call, "susss", &program, &replaced, &icon, &title, &text) <= 0) {
        return -1;
    }
    static_cast<FakeNotifications*>(self)->shown.push_back(
        std::string(program) + "|" + title + "|" + text
    );
    return sd_bus_reply_method_return(call, "u", 1U);
}
