// A Secret Service with one collection and one item, locked behind a prompt that stays up until the
// test answers it. It speaks on a thread of its own; the other calls come from the test's.
#pragma once

#include "desktop/BusConnection.h"

#include <atomic>
#include <string>
#include <thread>

class FakeSecretService
{
public:
    enum class Prompt
    {
        NotAsked,
        Up,
        Granted,
        Dismissed
    };

    /// The item has the account and the value given. Locked from the start if so asked.
    FakeSecretService(
        const std::string& address, std::string account, std::string value, bool locked
    );
    ~FakeSecretService();
    FakeSecretService(const FakeSecretService&) = delete;
    FakeSecretService& operator=(const FakeSecretService&) = delete;
    FakeSecretService(FakeSecretService&&) = delete;
    FakeSecretService& operator=(FakeSecretService&&) = delete;

    [[nodiscard]] Prompt prompt() const { return state; }

    /// `Granted` unlocks the collection, `Dismissed` does not.
    void answerPrompt(Prompt answer) { wanted = answer; }

private:
    static int received(sd_bus_message* message, void* self, sd_bus_error* error);

    void serve();
    void finishPrompt();
    int handle(sd_bus_message* message);
    int handleService(sd_bus_message* message, const std::string& member);
    int answerProperties(sd_bus_message* message, const std::string& path);
    int answerSearch(sd_bus_message* message) const;
    int answerUnlock(sd_bus_message* message) const;
    int answerSecrets(sd_bus_message* message);

    desktop::BusConnection bus;
    std::string account;
    std::string value;
    bool locked;
    std::atomic<Prompt> state = Prompt::NotAsked;
    std::atomic<Prompt> wanted = Prompt::NotAsked;
    std::atomic<bool> stopping = false;
    std::thread thread;
};
