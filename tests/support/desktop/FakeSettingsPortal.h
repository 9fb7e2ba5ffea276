// Tells programs on a session bus which appearance the user prefers, as a desktop's settings portal
// does when that changes. It answers no questions. One thread.
#pragma once

#include "desktop/BusConnection.h"

#include <string>

namespace desktop {

class FakeSettingsPortal
{
public:
    enum class Appearance : unsigned
    {
        Dark = 1,
        Light = 2
    };

    /// Throws `Failure` when there is a portal already.
    explicit FakeSettingsPortal(const std::string& busAddress);

    void prefer(Appearance appearance) const;

private:
    BusConnection bus;
};

} // namespace desktop
