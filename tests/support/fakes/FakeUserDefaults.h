// The defaults database in memory; told to fail it reads as absent and cannot synchronize. Records
// every write. One thread.
#pragma once

#include "fakes/Calls.h"
#include "platform/UserDefaults.h"

namespace fakes {

class FakeUserDefaults final : public platform::UserDefaults
{
public:
    explicit FakeUserDefaults(Calls& calls) : calls(calls) {}

    std::optional<platform::DefaultsValue> value(const std::string& key) override
    {
        const auto found = values.find(key);
        return failing || found == values.end() ? std::nullopt : std::optional(found->second);
    }

    void setValue(const std::string& key, const std::string& value) override
    {
        calls.push_back("userDefaults setValue " + key + " " + value);
        values[key] = value;
    }

    void removeObject(const std::string& key) override
    {
        calls.push_back("userDefaults removeObject " + key);
        values.erase(key);
    }

    bool synchronize() override
    {
        calls.emplace_back("userDefaults synchronize");
        return !failing;
    }

    std::optional<platform::DefaultsDomain> persistentDomain(const std::string& name) override
    {
        const auto found = domains.find(name);
        return found == domains.end() ? std::nullopt : std::optional(found->second);
    }

    platform::DefaultsDomain values;
    std::map<std::string, platform::DefaultsDomain> domains;
    bool failing = false;

private:
    Calls& calls;
};

} // namespace fakes
