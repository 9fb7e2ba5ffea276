// Keeps each value as one secret item of the user's keychain, under an account name made of this
// program's identifier and the key. Fatal without an identifier: a secret is never written under an
// anonymous name. Main thread only.
#pragma once

#include "storage/IKeyValueStorage.h"

namespace storage {

class KeyValueKeychainStorage final : public IKeyValueStorage
{
public:
    std::string getValue(const std::string& key) override;
    void setValue(const std::string& key, const std::string& value) override;
    void removeValue(const std::string& key) override;
};

} // namespace storage
