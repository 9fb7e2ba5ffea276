#include "desktop/FakeNotifications.h"

#include "desktop/Failure.h"

#include <cstdint>
#include <string_view>
#include <utility>

namespace desktop {

namespace {

constexpr auto NAME = "org.freedesktop.Notifications";
constexpr auto PATH = "/org/freedesktop/Notifications";

bool isText(std::string_view signature)
{
    return signature == "s";
}

std::string readVariant(sd_bus_message* call)
{
    const char* contents = nullptr;
    char type = 0;
    sd_bus_message_peek_type(call, &type, &contents);
    if (contents != nullptr && isText(contents)) {
        const char* text = "";
        sd_bus_message_read(call, "v", "s", &text);
        return text;
    }
    if (contents != nullptr && std::string_view(contents) == "b") {
        int truth = 0;
        sd_bus_message_read(call, "v", "b", &truth);
        return truth != 0 ? "true" : "false";
    }
    sd_bus_message_skip(call, "v");
    return {};
}

std::size_t countTexts(sd_bus_message* call)
{
    std::size_t count = 0;
    sd_bus_message_enter_container(call, SD_BUS_TYPE_ARRAY, "s");
    const char* text = nullptr;
    while (sd_bus_message_read(call, "s", &text) > 0) {
        ++count;
    }
    sd_bus_message_exit_container(call);
    return count;
}

std::map<std::string, std::string> readHints(sd_bus_message* call)
{
    std::map<std::string, std::string> hints;
    sd_bus_message_enter_container(call, SD_BUS_TYPE_ARRAY, "{sv}");
    while (sd_bus_message_enter_container(call, SD_BUS_TYPE_DICT_ENTRY, "sv") > 0) {
        const char* name = "";
        sd_bus_message_read(call, "s", &name);
        hints[name] = readVariant(call);
        sd_bus_message_exit_container(call);
    }
    sd_bus_message_exit_container(call);
    return hints;
}

} // namespace

FakeNotifications::FakeNotifications(const std::string& address) : bus(connectToBus(address))
{
    const int result =
        bus == nullptr ? -1 : sd_bus_add_object(bus.get(), nullptr, PATH, &handle, this);
    if (result < 0 || sd_bus_request_name(bus.get(), NAME, 0) < 0) {
        throw Failure("no notification service");
    }
}

bool FakeNotifications::hasShown(std::size_t number)
{
    while (sd_bus_process(bus.get(), nullptr) > 0) {
    }
    return shown.size() >= number;
}

int FakeNotifications::handle(sd_bus_message* call, void* self, sd_bus_error* /*error*/)
{
    auto& service = *static_cast<FakeNotifications*>(self);
    if (sd_bus_message_is_method_call(call, NAME, "GetCapabilities") > 0) {
        return service.tellCapabilities(call);
    }
    return sd_bus_message_is_method_call(call, NAME, "Notify") > 0 ? service.notify(call) : 0;
}

int FakeNotifications::notify(sd_bus_message* call)
{
    if (refuses) {
        return sd_bus_reply_method_errorf(call, SD_BUS_ERROR_LIMITS_EXCEEDED, "too many");
    }
    const char* program = nullptr;
    const char* icon = nullptr;
    const char* title = nullptr;
    const char* text = nullptr;
    std::uint32_t replaced = 0;
    if (sd_bus_message_read(call, "susss", &program, &replaced, &icon, &title, &text) <= 0) {
        return -1;
    }
    Notification notification{program, icon, title, text, 0, {}};
    notification.actions = countTexts(call);
    notification.hints = readHints(call);
    shown.push_back(std::move(notification));
    return sd_bus_reply_method_return(call, "u", 1U);
}

int FakeNotifications::tellCapabilities(sd_bus_message* call) const
{
    return readsMarkup ? sd_bus_reply_method_return(call, "as", 2, "body", "body-markup")
                       : sd_bus_reply_method_return(call, "as", 1, "body");
}

} // namespace desktop
