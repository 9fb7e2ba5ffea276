// Finds out where this user's items are kept and opens that. The items stay where they once are: in
// the embedded store as long as it holds any, in the Secret Service once the marker says so; only
// where nothing was kept yet does it matter whether a Secret Service is there. Blocks; worker
// thread.
#pragma once

#include "linux/secretservice/ItemStore.h"
#include "linux/secretservice/KeptMarker.h"
#include "linux/secretservice/SecretServiceSession.h"
#include "platform/KeychainItems.h"
#include "platform/Report.h"

#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace secretservice {

/// Where the program keeps what is its own, and how to reach the session.
struct KeychainPlaces
{
    std::string busAddress;       // of the session bus, empty when there is none
    std::filesystem::path folder; // $XDG_DATA_HOME/com.quorvent.Tarvel

    [[nodiscard]] std::filesystem::path embedded() const { return folder / "keychain"; }

    [[nodiscard]] std::filesystem::path marker() const { return folder / "secret-service-used"; }
};

class KeychainOpening
{
public:
    /// The keychain, or why there is none.
    struct Result
    {
        std::unique_ptr<platform::KeychainItems> items;
        std::string refusal;
    };

    /// `patience`: how long a service that must be there may take to come.
    KeychainOpening(
        KeychainPlaces places, platform::Report report, std::chrono::milliseconds patience
    );

    Result open();

    /// Makes `open` come back soon. Any thread.
    void cancel();

private:
    /// What came of asking the service once.
    struct Attempt
    {
        enum class Outcome
        {
            Opened,
            Refused, // at the prompt, which does not come up again
            NoService,
            Failing,
        };

        Outcome outcome = Outcome::Failing;
        std::unique_ptr<platform::KeychainItems> items; // of `Opened`
        std::string reason;                             // of `Refused` and `Failing`
    };

    Result openEmbedded();
    Result openService();
    Attempt attempt();
    /// The steps of an attempt: what comes of it where it ends with that one.
    std::optional<Attempt> findService();
    std::optional<Attempt> unlock();
    Attempt readItems();
    bool waitForNextAttempt();
    void noteSilence();

    KeychainPlaces places;
    platform::Report report;
    std::chrono::milliseconds patience;
    KeptMarker marker;
    bool kept = false; // the items, in the Secret Service
    SecretServiceSession session;
    std::mutex mutex;
    std::condition_variable cancellation;
    bool cancelled = false;
    bool delayed = false; // by a prompt, or by a bus that does not answer
    bool silenceReported = false;
};

} // namespace secretservice
