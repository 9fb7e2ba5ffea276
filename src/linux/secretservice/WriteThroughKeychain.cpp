#include "linux/secretservice/WriteThroughKeychain.h"

#include <algorithm>
#include <utility>

namespace secretservice {

namespace {

using platform::Bytes;
using platform::KeychainLookup;
using platform::KeychainStatus;
using namespace std::chrono_literals;

/// What the end may take for the writes that are still to be made.
constexpr auto LAST_WAIT = 2s;
constexpr auto FIRST_BACKOFF = 250ms;
constexpr auto LONGEST_BACKOFF = 8s;

} // namespace

WriteThroughKeychain::WriteThroughKeychain(
    std::unique_ptr<ItemStore> store,
    Items known,
    platform::Report report,
    std::chrono::milliseconds budget
)
    : store(std::move(store)),
      report(std::move(report)),
      budget(budget),
      known(std::move(known)),
      backoff(FIRST_BACKOFF),
      worker([this] { work(); })
{
}

WriteThroughKeychain::~WriteThroughKeychain()
{
    Lock lock(mutex);
    stopping = true;
    nextAttempt = Clock::now();
    heldUntil = nextAttempt;
    wake.notify_all();
    answered.wait_for(lock, LAST_WAIT, [this] { return ended; });
    lock.unlock();
    store->cancel();
    worker.join();
    if (known.pendingCount() > 0) {
        report(store->title() + " did not take the last changes; they are lost");
    }
}

KeychainStatus WriteThroughKeychain::add(const std::string& account, const Bytes& data)
{
    const auto deadline = Clock::now() + budget;
    Lock lock(mutex);
    ask(lock, account, deadline);
    if (known.find(account) != nullptr) {
        return KeychainStatus::DuplicateItem;
    }
    submit(lock, known.put(account, SecretBytes(data.begin(), data.end())), deadline);
    return KeychainStatus::NoError;
}

KeychainLookup WriteThroughKeychain::copyMatching(const std::string& account)
{
    const auto deadline = Clock::now() + budget;
    Lock lock(mutex);
    ask(lock, account, deadline);
    const SecretBytes* data = known.find(account);
    if (data == nullptr) {
        return {KeychainStatus::ItemNotFound, std::nullopt};
    }
    return {KeychainStatus::NoError, Bytes(data->begin(), data->end())};
}

KeychainStatus WriteThroughKeychain::remove(const std::string& account)
{
    const auto deadline = Clock::now() + budget;
    Lock lock(mutex);
    ask(lock, account, deadline);
    if (known.find(account) == nullptr) {
        return KeychainStatus::ItemNotFound;
    }
    known.erase(account);
    submitLater();
    return KeychainStatus::NoError;
}

KeychainStatus WriteThroughKeychain::removeAll()
{
    const auto deadline = Clock::now() + budget;
    Lock lock(mutex);
    ask(lock, std::nullopt, deadline);
    if (known.isEmpty()) {
        return KeychainStatus::ItemNotFound;
    }
    submit(lock, known.eraseAll(), deadline);
    return KeychainStatus::NoError;
}

void WriteThroughKeychain::ask(
    Lock& lock, std::optional<std::string> account, Clock::time_point deadline
)
{
    if (overdue || (account.has_value() && known.isPending(*account))) {
        return;
    }
    const std::uint64_t id = ++lastQuestion;
    question = Question{id, std::move(account)};
    wake.notify_all();
    if (!answered.wait_until(lock, deadline, [this, id] { return lastAnswer >= id; })) {
        overdue = true;
        noteFailure(lock, "does not answer");
    }
}

void WriteThroughKeychain::submit(Lock& lock, std::uint64_t write, Clock::time_point deadline)
{
    // Somebody is there to answer a prompt: it is a change of the user's that needs it.
    prompting = Prompting::Allowed;
    nextAttempt = Clock::now();
    heldUntil = nextAttempt;
    wake.notify_all();
    if (overdue) {
        return;
    }
    const std::uint64_t failedBefore = failedAttempts;
    const bool settled = answered.wait_until(lock, deadline, [this, write, failedBefore] {
        return !known.isPending(write) || failedAttempts != failedBefore;
    });
    if (!settled) {
        overdue = true;
        noteFailure(lock, "does not answer");
    }
}

void WriteThroughKeychain::submitLater()
{
    prompting = Prompting::Allowed;
    nextAttempt = Clock::now();
    heldUntil = nextAttempt + HOLD;
    wake.notify_all();
}

void WriteThroughKeychain::work()
{
    Lock lock(mutex);
    while (waitForWork(lock)) {
        if (question.has_value()) {
            answer(lock);
        } else {
            write(lock);
        }
        overdue = false;
        answered.notify_all();
    }
    lock.unlock();
    store->leaveThread();
    lock.lock();
    ended = true;
    answered.notify_all();
}

bool WriteThroughKeychain::waitForWork(Lock& lock)
{
    while (true) {
        const bool writes = known.pendingCount() > 0;
        const Clock::time_point due = std::max(nextAttempt, heldUntil);
        if (question.has_value() || (writes && Clock::now() >= due)) {
            return true;
        }
        if (stopping) {
            return false;
        }
        if (writes) {
            wake.wait_until(lock, due);
        } else {
            wake.wait(lock);
        }
    }
}

void WriteThroughKeychain::answer(Lock& lock)
{
    const Question asked = *std::exchange(question, std::nullopt);
    ItemRead read;
    Items all;
    Failure failure;
    lock.unlock();
    if (asked.account.has_value()) {
        read = store->read(*asked.account);
        if (read.state == ItemRead::State::Failed) {
            failure = read.reason;
        }
    } else {
        failure = store->readAll(all);
    }
    lock.lock();
    if (failure.has_value()) {
        lastAnswer = asked.id;
        noteFailure(lock, *failure);
        return;
    }
    if (asked.account.has_value()) {
        known.learn(*asked.account, read);
    } else {
        known.learnAll(all);
    }
    lastAnswer = asked.id;
    // An open keeper answers questions and may still refuse what waits to be written: that is the
    // outage, and its end is told by a write alone.
    if (known.pendingCount() == 0) {
        noteSuccess(lock);
    }
}

void WriteThroughKeychain::write(Lock& lock)
{
    const PendingWrite pending = known.start();
    const Prompting allowed = std::exchange(prompting, Prompting::Forbidden);
    lock.unlock();
    const Failure failure = execute(pending, allowed);
    lock.lock();
    known.finish(pending.id, !failure.has_value());
    if (failure.has_value()) {
        ++failedAttempts;
        // A change that came in the meantime is worth an attempt of its own.
        const bool changed = prompting == Prompting::Allowed;
        nextAttempt = Clock::now() + (changed ? Clock::duration::zero() : backoff);
        backoff = std::min<Clock::duration>(backoff * 2, LONGEST_BACKOFF);
        noteFailure(lock, *failure);
        return;
    }
    if (allowed == Prompting::Allowed) {
        // What waits behind is of the same occasion.
        prompting = allowed;
    }
    noteSuccess(lock);
}

Failure WriteThroughKeychain::execute(const PendingWrite& pending, Prompting prompting)
{
    switch (pending.kind) {
    case PendingWrite::Kind::Put:
        return store->put(pending.account, pending.data, prompting);
    case PendingWrite::Kind::Erase:
        return store->erase(pending.account, prompting);
    case PendingWrite::Kind::EraseAll:
        return store->eraseAll(prompting);
    }
    return "was asked for an unknown change";
}

void WriteThroughKeychain::noteFailure(Lock& lock, const std::string& reason)
{
    if (std::exchange(outage, true)) {
        return;
    }
    lock.unlock();
    report(store->title() + " " + reason + "; its last known items are used until it answers");
    lock.lock();
}

void WriteThroughKeychain::noteSuccess(Lock& lock)
{
    backoff = FIRST_BACKOFF;
    nextAttempt = Clock::now();
    if (!std::exchange(outage, false)) {
        return;
    }
    lock.unlock();
    report(store->title() + " answers again");
    lock.lock();
}

} // namespace secretservice
