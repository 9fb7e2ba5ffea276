// What the keychain holds for this program, as text.
#pragma once

#include "fakes/FakePlatform.h"

#include <optional>
#include <string>

namespace fakes {

inline std::string accountOf(const std::string& key)
{
    return "com.quorvent.Tarvel (" + key + ")";
}

inline void storeSecret(FakePlatform& platform, const std::string& key, const std::string& text)
{
    platform.keychainItems.items[accountOf(key)] = platform::Bytes(text.begin(), text.end());
}

inline std::optional<std::string> secret(const FakePlatform& platform, const std::string& key)
{
    const auto found = platform.keychainItems.items.find(accountOf(key));
    if (found == platform.keychainItems.items.end()) {
        return std::nullopt;
    }
    return std::string(found->second.begin(), found->second.end());
}

} // namespace fakes
