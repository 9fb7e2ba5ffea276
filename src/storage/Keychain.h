// A thin wrapper over the keychain's item calls. Replacing is always delete-then-add, never an
// update in place. Main thread only.
#pragma once

#include "platform/KeychainItems.h"

#include <optional>
#include <string>

namespace storage {

class Keychain
{
public:
    /// Replaces the account's item. True exactly when the new item was added.
    static bool save(const std::string& key, const platform::Bytes& data);

    /// The account's data, or nothing.
    static std::optional<platform::Bytes> load(const std::string& key);

    /// True exactly when an item was deleted.
    static bool remove(const std::string& key);

    /// Deletes every generic password that this application may reach.
    static bool clear();
};

} // namespace storage
