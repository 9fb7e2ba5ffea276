#include "storage/KeyValueStorage.h"

#include "storage/KeyValueKeychainStorage.h"
#include "storage/KeyValueUserDefaultsStorage.h"

namespace storage {

namespace {

std::unique_ptr<IKeyValueStorage> makeEngine(bool useKeychain)
{
    if (useKeychain) {
        return std::make_unique<KeyValueKeychainStorage>();
    }
    return std::make_unique<KeyValueUserDefaultsStorage>();
}

} // namespace

KeyValueStorage::KeyValueStorage() : KeyValueStorage(true) {}

KeyValueStorage::KeyValueStorage(bool useKeychain) : keyValueStorageEngine(makeEngine(useKeychain))
{
}

std::string KeyValueStorage::getValue(const std::string& key)
{
    return keyValueStorageEngine->getValue(key);
}

void KeyValueStorage::setValue(const std::string& key, const std::string& value)
{
    keyValueStorageEngine->setValue(key, value);
}

void KeyValueStorage::removeValue(const std::string& key)
{
    keyValueStorageEngine->removeValue(key);
}

} // namespace storage
