// A notification service on a private bus that remembers what it was asked to show. Works only
// while it is asked `hasShown`; one thread.
#pragma once

#include "desktop/BusConnection.h"

#include <string>
#include <vector>

class FakeNotifications
{
public:
    /// Throws `desktop::Failure` when the bus does not let it be the service.
    explicit FakeNotifications(const std::string& address);
    FakeNotifications(const FakeNotifications&) = delete;
    FakeNotifications& operator=(const FakeNotifications&) = delete;
    FakeNotifications(FakeNotifications&&) = delete;
    FakeNotifications& operator=(FakeNotifications&&) = delete;
    ~FakeNotifications() = default;

    /// Whether that many have been asked for.
    bool hasShown(std::size_t number);

    const std::vector<std::string>& texts() const { return shown; }

private:
    static int notify(sd_bus_message* call, void* self, sd_bus_error* error);

    desktop::BusConnection bus;
    std::vector<std::string> shown;
};
