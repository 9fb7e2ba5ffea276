// Short texts under fixed keys. Main thread only. Nothing here fails: what is absent or cannot be
// read is the empty string.
#pragma once

#include <string>

namespace storage {

class IKeyValueStorage
{
public:
    IKeyValueStorage() = default;
    IKeyValueStorage(const IKeyValueStorage&) = delete;
    IKeyValueStorage& operator=(const IKeyValueStorage&) = delete;
    IKeyValueStorage(IKeyValueStorage&&) = delete;
    IKeyValueStorage& operator=(IKeyValueStorage&&) = delete;
    virtual ~IKeyValueStorage() = default;

    /// The stored value, or "" when the key is absent or cannot be read.
    virtual std::string getValue(const std::string& key) = 0;

    /// Replaces any earlier value.
    virtual void setValue(const std::string& key, const std::string& value) = 0;

    /// Deletes the key if present.
    virtual void removeValue(const std::string& key) = 0;
};

} // namespace storage
