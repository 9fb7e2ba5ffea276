// An alert with one button that the caller waits for. Main thread only.
#pragma once

#include <string>

namespace ui {

class LocalNotificationService
{
public:
    /// Returns when the alert was answered.
    void alertWithTitle(const std::string& title, const std::string& message, bool isError) const;
};

} // namespace ui
