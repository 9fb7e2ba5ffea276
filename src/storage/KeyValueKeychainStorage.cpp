#include "storage/KeyValueKeychainStorage.h"

#include "app/Constants.h"
#include "platform/Text.h"
#include "storage/Keychain.h"

#include <optional>

namespace storage {

namespace {

std::string itemName(const std::string& key)
{
    return app::Constants::BUNDLE_ID() + " (" + key + ")";
}

} // namespace

std::string KeyValueKeychainStorage::getValue(const std::string& key)
{
    const std::optional<platform::Bytes> data = Keychain::load(itemName(key));
    if (!data.has_value()) {
        return {};
    }
    std::string text(data->begin(), data->end());
    return platform::text::isValidUtf8(text) ? text : std::string();
}

void KeyValueKeychainStorage::setValue(const std::string& key, const std::string& value)
{
    const std::string name = itemName(key);
    if (!platform::text::isValidUtf8(value)) {
        return;
    }
    Keychain::save(name, platform::Bytes(value.begin(), value.end()));
}

void KeyValueKeychainStorage::removeValue(const std::string& key)
{
    Keychain::remove(itemName(key));
}

} // namespace storage
