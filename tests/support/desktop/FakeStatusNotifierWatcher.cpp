#include "desktop/FakeStatusNotifierWatcher.h"

#include "desktop/Failure.h"

#include <chrono>
#include <cstdint>
#include <utility>

namespace desktop {

namespace {

constexpr auto NAME = "org.kde.StatusNotifierWatcher";
constexpr auto PATH = "/StatusNotifierWatcher";
constexpr auto PROPERTIES = "org.freedesktop.DBus.Properties";
constexpr std::chrono::milliseconds TURN{5}; // how soon a wish is noticed

} // namespace

FakeStatusNotifierWatcher::FakeStatusNotifierWatcher(const std::string& address, bool withHost)
    : bus(connectToBus(address)),
      host(withHost),
      wantsHost(withHost)
{
    constexpr std::uint64_t FLAGS = SD_BUS_NAME_ALLOW_REPLACEMENT | SD_BUS_NAME_REPLACE_EXISTING;
    const int result =
        bus == nullptr ? -1 : sd_bus_add_object(bus.get(), nullptr, PATH, &handle, this);
    if (result < 0 || sd_bus_request_name(bus.get(), NAME, FLAGS) < 0) {
        throw Failure("no watcher of status notifier items");
    }
    thread = std::thread([this] { run(); });
}

FakeStatusNotifierWatcher::~FakeStatusNotifierWatcher()
{
    ending = true;
    thread.join();
}

std::vector<std::string> FakeStatusNotifierWatcher::registered() const
{
    const std::lock_guard lock(mutex);
    return names;
}

void FakeStatusNotifierWatcher::run()
{
    while (!ending) {
        if (hanging) {
            std::this_thread::sleep_for(TURN);
            continue;
        }
        while (sd_bus_process(bus.get(), nullptr) > 0) {
        }
        followHost();
        constexpr auto MICROSECONDS = std::chrono::microseconds(TURN).count();
        sd_bus_wait(bus.get(), static_cast<std::uint64_t>(MICROSECONDS));
    }
}

void FakeStatusNotifierWatcher::followHost()
{
    const bool wanted = wantsHost;
    if (std::exchange(host, wanted) != wanted) {
        sd_bus_emit_signal(
            bus.get(),
            PATH,
            NAME,
            wanted ? "StatusNotifierHostRegistered" : "StatusNotifierHostUnregistered",
            nullptr
        );
    }
}

int FakeStatusNotifierWatcher::handle(sd_bus_message* call, void* self, sd_bus_error* /*error*/)
{
    auto& watcher = *static_cast<FakeStatusNotifierWatcher*>(self);
    if (sd_bus_message_is_method_call(call, NAME, "RegisterStatusNotifierItem") > 0) {
        return watcher.takeIn(call);
    }
    return sd_bus_message_is_method_call(call, PROPERTIES, "Get") > 0 ? watcher.tellProperty(call)
                                                                      : 0;
}

int FakeStatusNotifierWatcher::takeIn(sd_bus_message* call)
{
    if (refusing) {
        constexpr auto REFUSED = "org.freedesktop.DBus.Error.LimitsExceeded";
        return sd_bus_reply_method_errorf(call, REFUSED, "there are too many");
    }
    const char* name = nullptr;
    if (sd_bus_message_read(call, "s", &name) <= 0) {
        return -1;
    }
    const std::lock_guard lock(mutex);
    names.emplace_back(name);
    return sd_bus_reply_method_return(call, nullptr);
}

int FakeStatusNotifierWatcher::tellProperty(sd_bus_message* call) const
{
    return sd_bus_reply_method_return(call, "v", "b", host ? 1 : 0);
}

} // namespace desktop
