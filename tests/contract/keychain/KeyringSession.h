// A session with a bus and, when asked for, a real keyring of its own, which the keychain under
// test finds through this process's environment. One in the life of a process.
#pragma once

#include "desktop/Desktop.h"
#include "desktop/MainLoop.h"
#include "desktop/PrivateBus.h"
#include "desktop/PrivateKeyring.h"
#include "desktop/TemporaryFolder.h"
#include "linux/secretservice/KeychainGate.h"
#include "platform/KeychainItems.h"
#include "processes/Environment.h"

#include <chrono>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

class KeyringSession
{
public:
    static constexpr auto ACCOUNT = "com.quorvent.Tarvel (Password)";

    /// With a bus, without a keyring.
    KeyringSession();

    void startBus();
    void stopBus();

    /// The login keyring, made at the first time and open.
    void startKeyring();

    /// The keyring as an earlier one left it: closed, or without any collection.
    void startLockedKeyring();
    void stopKeyring();

    desktop::ChildProcess& keyringProcess() { return keyring->process(); }

    desktop::PrivateBus& bus() { return *privateBus; }

    desktop::MainLoop& loop() { return mainLoop; }

    [[nodiscard]] std::filesystem::path folder() const { return home.path(); }

    [[nodiscard]] secretservice::KeychainPlaces places() const;

    /// What the gate gives within the patience; nothing when it refuses, which `refusal` tells.
    std::unique_ptr<platform::KeychainItems>
    open(std::chrono::milliseconds patience = std::chrono::seconds(30));

    [[nodiscard]] const std::string& refusal() const { return refused; }

    /// Exit status of another program of the session.
    std::optional<int> run(const std::vector<std::string>& arguments);

    platform::Report report();
    std::vector<std::string> lines();

    /// As another program sees and writes them.
    const desktop::KeyringItems& itemsOfOthers() { return keyring->items(); }

    /// The one of `ACCOUNT`; nothing too when the service does not answer.
    [[nodiscard]] std::optional<std::string> storedItem() const;
    [[nodiscard]] bool waitForStoredItem(const std::optional<std::string>& expected) const;

private:
    desktop::TemporaryFolder home;
    desktop::Environment environment = desktop::privateEnvironment(home);
    std::unique_ptr<desktop::PrivateBus> privateBus;
    std::optional<processes::EnvironmentVariable> busVariable;
    std::unique_ptr<desktop::PrivateKeyring> keyring;
    desktop::MainLoop mainLoop;
    std::string refused;
    std::mutex mutex; // of the one below
    std::vector<std::string> reported;
};

platform::Bytes bytes(const std::string& text);

/// The item's text, or nothing when there is none.
std::optional<std::string> textOf(platform::KeychainItems& items, const std::string& account);
