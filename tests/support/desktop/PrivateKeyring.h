// A Secret Service of its own: gnome-keyring with a login keyring that is made, and unlocked, at
// once. It keeps its files in the private folders of the environment it is given. Where its daemon
// ended by itself, this is said on standard error at the latest when the object goes, so that a
// test that failed for it tells why.
#pragma once

#include "desktop/ChildProcess.h"
#include "desktop/KeyringItems.h"
#include "desktop/PrivateBus.h"

#include <filesystem>
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
    ~PrivateKeyring();
    PrivateKeyring(const PrivateKeyring&) = delete;
    PrivateKeyring& operator=(const PrivateKeyring&) = delete;
    PrivateKeyring(PrivateKeyring&&) = delete;
    PrivateKeyring& operator=(PrivateKeyring&&) = delete;

    [[nodiscard]] ChildProcess& process() { return daemon; }

    /// What it keeps; throws `Failure` where its daemon has died.
    const KeyringItems& items();

    static constexpr auto PASSWORD = "keyring password";

private:
    void waitForService(const PrivateBus& bus);

    /// How the daemon ended, where nobody asked it to; empty otherwise.
    std::string death();

    std::filesystem::path words; // what the daemon says
    ChildProcess daemon;
    KeyringItems client;
};

} // namespace desktop
