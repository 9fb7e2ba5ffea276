// The keychain over a store that may take its time: one worker thread asks it, the main thread
// waits 50 ms at most and is answered from what is known. What the store did not take is tried
// again in order until it does, so nothing is lost while the process lives; one line when it begins
// to fail, one when it is back. Its end waits for writes: destroy it before the process exits.
#pragma once

#include "linux/process/LongestWait.h"
#include "linux/secretservice/ItemStore.h"
#include "linux/secretservice/KnownItems.h"
#include "platform/KeychainItems.h"
#include "platform/Report.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace secretservice {

class WriteThroughKeychain : public platform::KeychainItems
{
public:
    /// What a call may take.
    static constexpr auto BUDGET = process::LONGEST_WAIT_FOR_A_THREAD;

    /// How long a removal is kept back.
    static constexpr auto HOLD = std::chrono::milliseconds(200);

    /// `known` is all that the store holds at this time.
    WriteThroughKeychain(
        std::unique_ptr<ItemStore> store,
        Items known,
        platform::Report report,
        std::chrono::milliseconds budget = BUDGET
    );
    ~WriteThroughKeychain() override;
    WriteThroughKeychain(const WriteThroughKeychain&) = delete;
    WriteThroughKeychain& operator=(const WriteThroughKeychain&) = delete;
    WriteThroughKeychain(WriteThroughKeychain&&) = delete;
    WriteThroughKeychain& operator=(WriteThroughKeychain&&) = delete;

    platform::KeychainStatus add(const std::string& account, const platform::Bytes& data) override;
    platform::KeychainLookup copyMatching(const std::string& account) override;
    platform::KeychainStatus remove(const std::string& account) override;
    platform::KeychainStatus removeAll() override;

private:
    using Clock = std::chrono::steady_clock;
    using Lock = std::unique_lock<std::mutex>;

    struct Question
    {
        std::uint64_t id = 0;
        std::optional<std::string> account; // absent: all of them
    };

    // Main thread, with the lock held.
    void ask(Lock& lock, std::optional<std::string> account, Clock::time_point deadline);
    void submit(Lock& lock, std::uint64_t write, Clock::time_point deadline);
    void submitLater();

    // Worker thread.
    void work();
    bool waitForWork(Lock& lock);
    void answer(Lock& lock);
    void write(Lock& lock);
    Failure execute(const PendingWrite& pending, Prompting prompting);

    // Either thread, with the lock held; it is let go while a line is reported.
    void noteFailure(Lock& lock, const std::string& reason);
    void noteSuccess(Lock& lock);

    std::unique_ptr<ItemStore> store;
    platform::Report report;
    std::chrono::milliseconds budget;
    std::mutex mutex;
    std::condition_variable wake;     // for the worker
    std::condition_variable answered; // for the main thread
    KnownItems known;
    std::optional<Question> question;
    std::uint64_t lastQuestion = 0;
    std::uint64_t lastAnswer = 0;
    std::uint64_t failedAttempts = 0;
    Clock::time_point nextAttempt;
    Clock::time_point heldUntil;
    Clock::duration backoff;
    Prompting prompting = Prompting::Allowed;
    bool overdue = false; // the worker is held up; waiting for it again would be in vain
    bool outage = false;
    bool stopping = false;
    bool ended = false;
    std::thread worker;
};

} // namespace secretservice
