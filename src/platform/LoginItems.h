// What starts with the user's session. Main thread only.
#pragma once

#include "platform/Port.h"

#include <string>

namespace platform {

class LoginItems : public Port
{
public:
    /// Registers or unregisters the login item. True exactly when it is now as asked for.
    virtual bool setEnabled(const std::string& bundleIdentifier, bool enabled) = 0;
};

} // namespace platform
