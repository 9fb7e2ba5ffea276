#include "storage/KeyValueUserDefaultsStorage.h"

#include "platform/Platform.h"

#include <optional>
#include <variant>

namespace storage {

KeyValueUserDefaultsStorage::KeyValueUserDefaultsStorage()
    : storage(platform::current().userDefaults)
{
}

std::string KeyValueUserDefaultsStorage::getValue(const std::string& key)
{
    const std::optional<platform::DefaultsValue> value = storage.value(key);
    if (!value.has_value()) {
        return {};
    }
    const std::string* text = std::get_if<std::string>(&*value);
    return text == nullptr ? std::string() : *text;
}

void KeyValueUserDefaultsStorage::setValue(const std::string& key, const std::string& value)
{
    storage.setValue(key, value);
    storage.synchronize();
}

void KeyValueUserDefaultsStorage::removeValue(const std::string& key)
{
    storage.removeObject(key);
    storage.synchronize();
}

} // namespace storage
