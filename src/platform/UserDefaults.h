// The user's defaults database, and the read-only domains beside it. Main thread only.
#pragma once

#include "platform/Port.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <variant>

namespace platform {

/// A value of a type that the system does not read (a list, a dictionary).
struct OpaqueValue
{
    friend bool operator==(const OpaqueValue&, const OpaqueValue&) = default;
};

using DefaultsValue = std::variant<std::string, bool, std::int64_t, double, OpaqueValue>;
using DefaultsDomain = std::map<std::string, DefaultsValue>;

/// Name of the domain that holds the system-wide settings.
inline constexpr auto GLOBAL_DOMAIN = "NSGlobalDomain";

class UserDefaults : public Port
{
public:
    /// The value under the key, or nothing when there is none or the database cannot be read.
    virtual std::optional<DefaultsValue> value(const std::string& key) = 0;

    virtual void setValue(const std::string& key, const std::string& value) = 0;

    virtual void removeObject(const std::string& key) = 0;

    /// Makes what was set and removed durable. False when that failed; the values then still count
    /// in this process.
    virtual bool synchronize() = 0;

    /// A whole domain as it is now, or nothing when there is none of that name.
    virtual std::optional<DefaultsDomain> persistentDomain(const std::string& name) = 0;
};

} // namespace platform
