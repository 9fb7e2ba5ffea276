// Items of the kind that Tarvel keeps in the Secret Service, as another program sees them. One
// client of the service for as long as it lives: gnome-keyring 42 ends now and then over a client
// that comes while another one leaves. One thread.
#pragma once

#include "desktop/BusConnection.h"

#include <optional>
#include <string>

namespace desktop {

class KeyringItems
{
public:
    explicit KeyringItems(const std::string& busAddress) : bus(connectToBus(busAddress)) {}

    /// Both throw `Failure` when the service refuses or does not answer. `account` is the whole
    /// text, "com.quorvent.Tarvel (Password)" for one.
    void store(const std::string& account, const std::string& secret) const;

    /// Nothing when there is no such item.
    [[nodiscard]] std::optional<std::string> lookUp(const std::string& account) const;

private:
    BusConnection bus;
};

} // namespace desktop
