// A notification service on a private bus that remembers what it was asked to show. Works only
// while it is asked `hasShown`; one thread.
#pragma once

#include "desktop/BusConnection.h"

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace desktop {

class FakeNotifications
{
public:
    struct Notification
    {
        std::string program;
        std::string icon;
        std::string title;
        std::string text;
        std::size_t actions = 0;
        std::map<std::string, std::string> hints; // booleans as "true" and "false", others empty
    };

    /// Throws `Failure` when the bus does not let it be the service.
    explicit FakeNotifications(const std::string& address);
    FakeNotifications(const FakeNotifications&) = delete;
    FakeNotifications& operator=(const FakeNotifications&) = delete;
    FakeNotifications(FakeNotifications&&) = delete;
    FakeNotifications& operator=(FakeNotifications&&) = delete;
    ~FakeNotifications() = default;

    bool readsMarkup = false;
    bool refuses = false; // answers with an error

    /// Whether that many have been asked for.
    bool hasShown(std::size_t number);

    const std::vector<Notification>& notifications() const { return shown; }

private:
    static int handle(sd_bus_message* call, void* self, sd_bus_error* error);
    int notify(sd_bus_message* call);
    int tellCapabilities(sd_bus_message* call) const;

    BusConnection bus;
    std::vector<Notification> shown;
};

} // namespace desktop
