// Generic passwords in the user's keychain, one secret item an account name. Main thread only. A
// call answers within 50 ms, whatever the keychain does; what could not be asked is answered from
// what was last known, so that a service that goes away never reads as "no password".
#pragma once

#include "platform/Port.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace platform {

using Bytes = std::vector<std::uint8_t>;

enum class KeychainStatus
{
    NoError = 0,
    NotAvailable = -25291,
    DuplicateItem = -25299,
    ItemNotFound = -25300,
};

/// `data` is absent when nothing was found or when what was found is not a data object.
struct KeychainLookup
{
    KeychainStatus status = KeychainStatus::NotAvailable;
    std::optional<Bytes> data;
};

class KeychainItems : public Port
{
public:
    /// Adds an item; `DuplicateItem` when the account has one already.
    virtual KeychainStatus add(const std::string& account, const Bytes& data) = 0;

    /// The one item of the account.
    virtual KeychainLookup copyMatching(const std::string& account) = 0;

    /// Deletes the account's item; `ItemNotFound` when there is none.
    virtual KeychainStatus remove(const std::string& account) = 0;

    /// Deletes every generic password that this application may reach.
    virtual KeychainStatus removeAll() = 0;
};

} // namespace platform
