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
    kept = marker.isSet();
    if (!kept && EmbeddedStore::holdsItems(places.embedded())) {
        return openEmbedded();
    }
    Result result = openService();
    session.leave();
    return result;
}

KeychainOpening::Result KeychainOpening::openService()
{
    using Outcome = Attempt::Outcome;
    std::string reason;
    auto deadline = Clock::now() + patience;
    do {
        delayed = false;
        Attempt latest = attempt();
        if (latest.outcome == Outcome::Opened || latest.outcome == Outcome::Refused) {
            return {std::move(latest.items), std::move(latest.reason)};
        }
        const bool absent = latest.outcome == Outcome::NoService;
        if (absent && !kept) {
            return openEmbedded();
        }
        reason = absent ? "is not there, but this user's settings are kept in it" : latest.reason;
        if (delayed) {
            // The user may have taken any time over a prompt, and a bus over its answer.
            deadline = Clock::now() + patience;
        }
    } while (Clock::now() < deadline && waitForNextAttempt());
    return {nullptr, "the keyring " + reason};
}

void KeychainOpening::noteSilence()
{
    delayed = true;
    if (!std::exchange(silenceReported, true)) {
        report("the session bus does not answer: Tarvel waits for it, and protects nothing yet");
    }
}

KeychainOpening::Attempt KeychainOpening::attempt()
{
    if (std::optional<Attempt> end = findService()) {
        return std::move(*end);
    }
    if (std::optional<Attempt> end = unlock()) {
        return std::move(*end);
    }
    return readItems();
}

std::optional<KeychainOpening::Attempt> KeychainOpening::findService()
{
    using Presence = SecretServiceSession::Presence;
    switch (places.busAddress.empty() ? Presence::Absent : session.presence()) {
    case Presence::Present:
        break;
    case Presence::Absent:
        return Attempt{.outcome = Attempt::Outcome::NoService};
    case Presence::Unknown:
        noteSilence();
        return Attempt{.reason = "cannot be asked for: the session bus does not answer"};
    }
    return std::nullopt;
}

std::optional<KeychainOpening::Attempt> KeychainOpening::unlock()
{
    const platform::Report noticing = [this](std::string_view line) {
        delayed = true;
        report(line);
    };
    std::string reason;
    switch (unlockKeyring(session, kept, noticing, reason)) {
    case Unlocking::StaysLocked:
        return Attempt{
            .outcome = Attempt::Outcome::Refused,
            .reason = "the keyring stays locked: its prompt was dismissed or could not be shown"};
    case Unlocking::Failed:
        return Attempt{.reason = std::move(reason)};
    case Unlocking::Open:
        break;
    }
    return std::nullopt;
}

KeychainOpening::Attempt KeychainOpening::readItems()
{
    Items items;
    SecretServiceStore store(marker);
    Failure failure = store.readAll(items);
    store.leaveThread();
    const bool lost = items.empty() && marker.holdsItems();
    if (!failure.has_value() && (lost || !items.empty())) {
        failure = marker.note(!items.empty());
    }
    if (failure.has_value()) {
        return {.reason = std::move(*failure)};
    }
    if (lost) {
        // An agent that ends would protect even less than one that greets its user again.
        report(
            "the keyring is open and has lost the settings that were kept in it: Tarvel begins anew"
        );
    }
    return {
        .outcome = Attempt::Outcome::Opened,
        .items = std::make_unique<SecretServiceKeychain>(marker, std::move(items), report)};
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
