// The absence of notifications: every one is dropped.
#pragma once

#include "platform/UserNotifications.h"

namespace platform {

class NoUserNotifications final : public UserNotifications
{
public:
    void deliver(const UserNotification& /*notification*/) override {}
};

} // namespace platform
