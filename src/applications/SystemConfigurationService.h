// Two questions about the user's system: is its appearance dark, and does the program start with
// the session. Nothing is cached. Main thread only.
#pragma once

namespace applications {

class SystemConfigurationService
{
public:
    /// False wherever the appearance is missing or malformed.
    [[nodiscard]] bool darkModeOn() const;

    /// Switches the login item of the helper. True when it is now as asked for; nothing is
    /// reported.
    [[nodiscard]] bool startAtLogin(bool enabled) const;
};

} // namespace applications
