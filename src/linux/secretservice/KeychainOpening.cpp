#include "linux/secretservice/KeychainOpening.h"

#include "linux/secretservice/EmbeddedKeychain.h"
#include "linux/secretservice/KeyringUnlock.h"
#include "linux/secretservice/SecretServiceKeychain.h"

#include <string_view>
#include <utility>

namespace secretservice {

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto INTERVAL = std::chrono::milliseconds(100);

} // namespace

KeychainOpening::KeychainOpening(
    KeychainPlaces places, platform::Report report, std::chrono::milliseconds patience
)
    : places(std::move(places)),
      report(std::move(report)),
      patience(patience),
      marker(this->places.marker())
{
    session.onBusSilent = [this] { noteSilence(); };
}

void KeychainOpening::cancel()
{
    session.cancel();
    const std::lock_guard lock(mutex);
    cancelled = true;
    cancellation.notify_all();
}

bool KeychainOpening::waitForNextAttempt()
{
    std::unique_lock lock(mutex);
    return !cancellation.wait_for(lock, INTERVAL, [this] { return cancelled; });
}

KeychainOpening::Result KeychainOpening::open()
{
    const bool kept = marker.isSet();
    if (!kept && EmbeddedStore::holdsItems(places.embedded())) {
        return openEmbedded();
    }
    Result result;
    std::string reason;
    auto deadline = Clock::now() + patience;
    do {
        delayed = false;
        const Attempt outcome = attempt(kept, result, reason);
        if (outcome == Attempt::NoService && !kept) {
            result = openEmbedded();
        }
        if (outcome == Attempt::NoService) {
            reason = "is not there, but this user's settings are kept in it";
        }
        if (delayed) {
            // The user may have taken any time over a prompt, and a bus over its answer.
            deadline = Clock::now() + patience;
        }
    } while (!result.items && result.refusal.empty() && Clock::now() < deadline &&
             waitForNextAttempt());
    if (!result.items && result.refusal.empty()) {
        result.refusal = "the keyring " + reason;
    }
    session.leave();
    return result;
}

void KeychainOpening::noteSilence()
{
    delayed = true;
    if (!std::exchange(silenceReported, true)) {
        report("the session bus does not answer: Tarvel waits for it, and protects nothing yet");
    }
}

KeychainOpening::Attempt KeychainOpening::attempt(bool kept, Result& result, std::string& reason)
{
    using Presence = SecretServiceSession::Presence;
    const Presence presence = places.busAddress.empty() ? Presence::Absent : session.presence();
    if (presence == Presence::Absent) {
        return Attempt::NoService;
    }
    if (presence == Presence::Unknown) {
        noteSilence();
        reason = "cannot be asked for: the session bus does not answer";
        return Attempt::NoAnswer;
    }
    const platform::Report noticing = [this](std::string_view line) {
        delayed = true;
        report(line);
    };
    const Unlocking unlocking = unlockKeyring(session, kept, noticing, reason);
    if (unlocking == Unlocking::StaysLocked) {
        result.refusal = "the keyring stays locked: its prompt was dismissed or could not be shown";
        return Attempt::Refused;
    }
    if (unlocking == Unlocking::Failed) {
        return Attempt::Failing;
    }
    Items items;
    SecretServiceStore store(marker);
    Failure failure = store.readAll(items);
    store.leaveThread();
    const bool lost = items.empty() && marker.holdsItems();
    if (!failure.has_value() && (lost || !items.empty())) {
        failure = marker.note(!items.empty());
    }
    if (failure.has_value()) {
        reason = *failure;
        return Attempt::Failing;
    }
    if (lost) {
        // An agent that ends would protect even less than one that greets its user again.
        report(
            "the keyring is open and has lost the settings that were kept in it: Tarvel begins anew"
        );
    }
    result.items = std::make_unique<SecretServiceKeychain>(marker, std::move(items), report);
    return Attempt::Opened;
}

KeychainOpening::Result KeychainOpening::openEmbedded()
{
    Items items;
    EmbeddedStore store(places.embedded(), report);
    if (const Failure failure = store.readAll(items)) {
        return {
            nullptr,
            store.title() + " " + *failure + "; move that file away to begin without what it held"};
    }
    return {std::make_unique<EmbeddedKeychain>(places.embedded(), std::move(items), report), {}};
}

} // namespace secretservice
