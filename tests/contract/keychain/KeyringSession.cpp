#include "KeyringSession.h"

#include "desktop/Failure.h"
#include "desktop/Wait.h"

#include <string_view>
#include <utility>

namespace {

/// GLib keeps one connection to the session bus for a whole process, and one whose bus was stopped
/// can outlive its users.
void refuseASecondOne()
{
    static bool used = false;
    if (std::exchange(used, true)) {
        throw desktop::Failure("run each case in a process of its own, as ctest does");
    }
}

} // namespace

KeyringSession::KeyringSession()
{
    refuseASecondOne();
    startBus();
    // Before any thread is there that might read it.
    busVariable.emplace("DBUS_SESSION_BUS_ADDRESS", privateBus->address());
    environment["DBUS_SESSION_BUS_ADDRESS"] = privateBus->address();
}

void KeyringSession::startBus()
{
    privateBus = std::make_unique<desktop::PrivateBus>(home.subfolder("bus"), environment);
}

void KeyringSession::stopBus()
{
    keyring.reset();
    privateBus.reset();
}

void KeyringSession::startKeyring()
{
    keyring = std::make_unique<desktop::PrivateKeyring>(*privateBus, environment);
}

void KeyringSession::startLockedKeyring()
{
    keyring = std::make_unique<desktop::PrivateKeyring>(
        *privateBus, environment, desktop::PrivateKeyring::Locked{}
    );
}

void KeyringSession::stopKeyring()
{
    keyring.reset();
    const bool gone = desktop::waitUntil(
        [this] { return !privateBus->hasOwner("org.freedesktop.secrets"); },
        std::chrono::seconds(20)
    );
    if (!gone) {
        throw desktop::Failure("the keyring does not go");
    }
}

secretservice::KeychainPlaces KeyringSession::places() const
{
    return {
        .busAddress = privateBus ? privateBus->address() : std::string(),
        .folder = home.path() / "data"};
}

std::unique_ptr<platform::KeychainItems> KeyringSession::open(std::chrono::milliseconds patience)
{
    secretservice::KeychainGate gate(mainLoop, places(), report(), patience);
    std::unique_ptr<platform::KeychainItems> opened;
    bool answered = false;
    gate.open(
        [&](std::unique_ptr<platform::KeychainItems> items) {
            opened = std::move(items);
            answered = true;
        },
        [&](const std::string& reason) {
            refused = reason;
            answered = true;
        }
    );
    mainLoop.runUntil([&answered] { return answered; }, std::chrono::seconds(100));
    return opened;
}

std::optional<int> KeyringSession::run(const std::vector<std::string>& arguments)
{
    desktop::ChildProcess program({.arguments = arguments, .environment = environment});
    return program.waitForExitStatus(std::chrono::seconds(60));
}

platform::Report KeyringSession::report()
{
    return [this](std::string_view line) {
        const std::lock_guard lock(mutex);
        reported.emplace_back(line);
    };
}

std::vector<std::string> KeyringSession::lines()
{
    const std::lock_guard lock(mutex);
    return reported;
}

std::optional<std::string> KeyringSession::storedItem() const
{
    try {
        return keyring->items().lookUp(ACCOUNT);
    } catch (const desktop::Failure&) {
        return std::nullopt;
    }
}

bool KeyringSession::waitForStoredItem(const std::optional<std::string>& expected) const
{
    return desktop::waitUntil(
        [&] { return storedItem() == expected; },
        std::chrono::seconds(60),
        std::chrono::milliseconds(20)
    );
}

platform::Bytes bytes(const std::string& text)
{
    return {text.begin(), text.end()};
}

std::optional<std::string> textOf(platform::KeychainItems& items, const std::string& account)
{
    const platform::KeychainLookup lookup = items.copyMatching(account);
    if (lookup.status != platform::KeychainStatus::NoError || !lookup.data.has_value()) {
        return std::nullopt;
    }
    return std::string(lookup.data->begin(), lookup.data->end());
}
