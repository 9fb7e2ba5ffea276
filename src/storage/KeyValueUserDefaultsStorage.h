// Keeps values in the user's defaults database, handed to the disk at each write. A disk
// that takes its time is not waited for. Main thread only.
#pragma once

#include "platform/UserDefaults.h"
#include "storage/IKeyValueStorage.h"

namespace storage {

class KeyValueUserDefaultsStorage final : public IKeyValueStorage
{
public:
    /// Takes the user's standard defaults.
    KeyValueUserDefaultsStorage();

    /// A value that is not a text reads as "".
    std::string getValue(const std::string& key) override;
    void setValue(const std::string& key, const std::string& value) override;
    void removeValue(const std::string& key) override;

private:
    platform::UserDefaults& storage;
};

} // namespace storage
