// Keeps what was delivered. One thread.
#pragma once

#include "platform/UserNotifications.h"

#include <vector>

namespace fakes {

class FakeUserNotifications final : public platform::UserNotifications
{
public:
    void deliver(const platform::UserNotification& notification) override
    {
        delivered.push_back(notification);
    }

    std::vector<platform::UserNotification> delivered;
};

} // namespace fakes
