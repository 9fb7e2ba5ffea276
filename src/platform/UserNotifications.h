// The desktop's notifications: short texts that appear and go by themselves. Main thread only.
#pragma once

#include "platform/Port.h"

#include <string>

namespace platform {

struct UserNotification
{
    std::string title;
    std::string informativeText;
    bool hasActionButton = true;
    bool defaultSound = false;

    friend bool operator==(const UserNotification&, const UserNotification&) = default;
};

class UserNotifications : public Port
{
public:
    /// Hands the notification to the desktop without waiting. Where nobody shows notifications it
    /// is dropped, with a diagnostic line.
    virtual void deliver(const UserNotification& notification) = 0;
};

} // namespace platform
