// A Secret Service of its own: gnome-keyring with a login keyring that is made, and unlocked, at
// once. It keeps its files in the private folders of the environment it is given.
#pragma once

#include "desktop/ChildProcess.h"
#include "desktop/PrivateBus.h"

#include <optional>
#include <string>

namespace desktop {

class PrivateKeyring
{
public:
    /// Returns when the service is on the bus and its keyring open; throws `Failure`.
    PrivateKeyring(const PrivateBus& bus, const Environment& environment);

    /// The same keyring with its files as an earlier one left them, closed: whoever wants an item
    /// is asked for the keyring's password by `PASSWORD`'s prompt.
    struct Locked
    {
    };

    PrivateKeyring(const PrivateBus& bus, const Environment& environment, Locked /*locked*/);

    [[nodiscard]] ChildProcess& process() { return daemon; }

    static constexpr auto PASSWORD = "keyring password";

private:
    ChildProcess daemon;
};

} // namespace desktop
