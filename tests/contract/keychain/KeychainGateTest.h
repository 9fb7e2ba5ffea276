// The gate to the user's items in a session of its own.
#pragma once

#include "KeyringSession.h"
#include "linux/secretservice/EmbeddedKeychain.h"
#include "linux/secretservice/KeychainGate.h"
#include "linux/secretservice/SecretServiceKeychain.h"

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include <gtest/gtest.h>

inline bool isEmbedded(platform::KeychainItems* items)
{
    return dynamic_cast<secretservice::EmbeddedKeychain*>(items) != nullptr;
}

inline bool isInTheService(platform::KeychainItems* items)
{
    return dynamic_cast<secretservice::SecretServiceKeychain*>(items) != nullptr;
}

/// A gate that is being waited for, while the test goes on.
class OpeningGate
{
public:
    explicit OpeningGate(
        KeyringSession& session, std::chrono::milliseconds patience = std::chrono::seconds(60)
    )
        : loop(session.loop()),
          gate(session.loop(), session.places(), session.report(), patience)
    {
        gate.open(
            [this](std::unique_ptr<platform::KeychainItems> ready) {
                items = std::move(ready);
                answered = true;
            },
            [this](const std::string& reason) {
                refusal = reason;
                answered = true;
            }
        );
    }

    bool waitForAnswer()
    {
        return loop.runUntil([this] { return answered; }, std::chrono::seconds(100));
    }

    std::unique_ptr<platform::KeychainItems> items;
    std::string refusal;
    bool answered = false;

private:
    desktop::MainLoop& loop;
    secretservice::KeychainGate gate;
};

class KeychainGateTest : public testing::Test
{
protected:
    static constexpr auto ACCOUNT = KeyringSession::ACCOUNT;

    /// As if this user's items had been in the Secret Service before.
    void markKept() { ASSERT_EQ(secretservice::KeptMarker(marker).set(), std::nullopt); }

    KeyringSession session;
    std::filesystem::path marker = session.places().marker();
};
