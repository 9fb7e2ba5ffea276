// A keychain in memory that can be told to fail. Records every call. One thread.
#pragma once

#include "fakes/Calls.h"
#include "platform/KeychainItems.h"

#include <map>

namespace fakes {

class FakeKeychainItems final : public platform::KeychainItems
{
public:
    explicit FakeKeychainItems(Calls& calls) : calls(calls) {}

    platform::KeychainStatus add(const std::string& account, const platform::Bytes& data) override
    {
        calls.push_back("keychain add " + account);
        if (failing || failingAdd) {
            return platform::KeychainStatus::NotAvailable;
        }
        return items.emplace(account, data).second ? platform::KeychainStatus::NoError
                                                   : platform::KeychainStatus::DuplicateItem;
    }

    platform::KeychainLookup copyMatching(const std::string& account) override
    {
        calls.push_back("keychain copyMatching " + account);
        if (failing) {
            return {platform::KeychainStatus::NotAvailable, std::nullopt};
        }
        if (notADataObject) {
            return {platform::KeychainStatus::NoError, std::nullopt};
        }
        const auto found = items.find(account);
        if (found == items.end()) {
            return {platform::KeychainStatus::ItemNotFound, std::nullopt};
        }
        return {platform::KeychainStatus::NoError, found->second};
    }

    platform::KeychainStatus remove(const std::string& account) override
    {
        calls.push_back("keychain remove " + account);
        if (failing) {
            return platform::KeychainStatus::NotAvailable;
        }
        return items.erase(account) > 0 ? platform::KeychainStatus::NoError
                                        : platform::KeychainStatus::ItemNotFound;
    }

    platform::KeychainStatus removeAll() override
    {
        calls.emplace_back("keychain removeAll");
        if (failing) {
            return platform::KeychainStatus::NotAvailable;
        }
        if (items.empty()) {
            return platform::KeychainStatus::ItemNotFound;
        }
        items.clear();
        return platform::KeychainStatus::NoError;
    }

    std::map<std::string, platform::Bytes> items;
    bool failing = false;
    bool failingAdd = false;
    bool notADataObject = false;

private:
    Calls& calls;
};

} // namespace fakes
