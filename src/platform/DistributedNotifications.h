// Notices between the programs of one user's session. Main thread only; nothing is answered, and a
// notice that nobody hears is lost.
#pragma once

#include "platform/Port.h"

#include <functional>
#include <string>

namespace platform {

class DistributedNotifications : public Port
{
public:
    using Handler = std::function<void(const std::string& name, const std::string& object)>;

    /// Sends the notice; it has left this process when the call returns.
    virtual void post(const std::string& name, const std::string& object) = 0;

    /// Calls `handler` for every notice of that name, from now on. One handler a name.
    virtual void observe(const std::string& name, Handler handler) = 0;
};

} // namespace platform
