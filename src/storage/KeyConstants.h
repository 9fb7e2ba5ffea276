// The names under which everything persistent is kept.
#pragma once

namespace storage {

class KeyConstants
{
public:
    /// Keychain: the password as typed; empty or absent is no password.
    static constexpr auto APPLICATION_PASSWORD_KEY = "Password";
    /// Keychain: protected bundle identifiers, each followed by ";".
    static constexpr auto APPLICATIONS_KEY = "Applications";
    /// Keychain: "1" or "0".
    static constexpr auto APPLICATION_IS_ACTIVE_KEY = "Active";
    /// Keychain: "1" or "0".
    static constexpr auto START_AT_LOGIN_KEY = "LoginStart";
    /// Keychain: "1" or "0".
    static constexpr auto LOCK_ADMINISTRATIVE_APPS_KEY = "Administrative";
    /// User defaults: identifier of the application that is behind the lock window.
    static constexpr auto CURRENT_BLOCKED_APP_KEY = "cbaal";
    /// Not stored: name of the notice that tells the login-item helper to end.
    static constexpr auto TERMINATE_HELPER_KEY = "TERMINATE_HELPER_TARVEL";
};

} // namespace storage
