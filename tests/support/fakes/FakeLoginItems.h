// Login items in memory; a switch can be told to fail and then changes nothing. One thread.
#pragma once

#include "fakes/Calls.h"
#include "platform/LoginItems.h"

#include <set>

namespace fakes {

class FakeLoginItems final : public platform::LoginItems
{
public:
    explicit FakeLoginItems(Calls& calls) : calls(calls) {}

    bool setEnabled(const std::string& bundleIdentifier, bool isEnabled) override
    {
        calls.push_back(
            "loginItems setEnabled " + bundleIdentifier + (isEnabled ? " true" : " false")
        );
        if (failing) {
            return false;
        }
        if (isEnabled) {
            enabled.insert(bundleIdentifier);
        } else {
            enabled.erase(bundleIdentifier);
        }
        return true;
    }

    std::set<std::string> enabled;
    bool failing = false;

private:
    Calls& calls;
};

} // namespace fakes
