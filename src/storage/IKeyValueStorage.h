// Short texts under fixed keys. Main thread only. Nothing here fails: what is absent or cannot be
// read is the empty string.
#pragma once

#include "platform/Port.h"

#include <string>

namespace storage {

class IKeyValueStorage : public platform::Port
{
public:
    /// The stored value, or "" when the key is absent or cannot be read.
    virtual std::string getValue(const std::string& key) = 0;

    /// Replaces any earlier value.
    virtual void setValue(const std::string& key, const std::string& value) = 0;

    /// Deletes the key if present.
    virtual void removeValue(const std::string& key) = 0;
};

} // namespace storage
