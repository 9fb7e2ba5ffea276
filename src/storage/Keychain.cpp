#include "storage/Keychain.h"

#include "platform/Platform.h"

namespace storage {

namespace {

platform::KeychainItems& items()
{
    return platform::current().keychainItems;
}

} // namespace

bool Keychain::save(const std::string& key, const platform::Bytes& data)
{
    items().remove(key);
    return items().add(key, data) == platform::KeychainStatus::NoError;
}

std::optional<platform::Bytes> Keychain::load(const std::string& key)
{
    platform::KeychainLookup lookup = items().copyMatching(key);
    if (lookup.status != platform::KeychainStatus::NoError) {
        return std::nullopt;
    }
    return std::move(lookup.data);
}

bool Keychain::remove(const std::string& key)
{
    return items().remove(key) == platform::KeychainStatus::NoError;
}

bool Keychain::clear()
{
    return items().removeAll() == platform::KeychainStatus::NoError;
}

} // namespace storage
