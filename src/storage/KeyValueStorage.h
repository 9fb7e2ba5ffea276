// The storage that the services use: owns one engine, chosen at construction, and forwards to it.
#pragma once

#include "storage/IKeyValueStorage.h"

#include <memory>
#include <string>

namespace storage {

class KeyValueStorage final : public IKeyValueStorage
{
public:
    /// Over the user's keychain.
    KeyValueStorage();

    /// Over the user's keychain, or over the user defaults.
    explicit KeyValueStorage(bool useKeychain);

    std::string getValue(const std::string& key) override;
    void setValue(const std::string& key, const std::string& value) override;
    void removeValue(const std::string& key) override;

private:
    std::unique_ptr<IKeyValueStorage> keyValueStorageEngine;
};

} // namespace storage
