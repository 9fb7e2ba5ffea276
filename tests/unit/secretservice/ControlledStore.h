// A store in memory that answers, fails or hangs as it is told, and remembers what it was asked.
#pragma once

#include "linux/secretservice/ItemStore.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace secretservice {

/// What the test and its store share; the store itself belongs to the keychain.
class StoreControl
{
public:
    enum class Mode
    {
        Answering,
        Failing,
        RefusingWrites, // and answering questions
        Hanging,
        Unproven // finds nothing and does not know what that means
    };

    void become(Mode next)
    {
        const std::lock_guard lock(mutex);
        mode = next;
        changed.notify_all();
    }

    /// The mode in which a call ends: any but hanging, or nothing when it was cancelled.
    Mode pass()
    {
        std::unique_lock lock(mutex);
        ++entered;
        changed.notify_all();
        changed.wait(lock, [this] { return mode != Mode::Hanging || cancelled; });
        return cancelled ? Mode::Failing : mode;
    }

    /// Waits until that many calls have begun since the start.
    void waitForCalls(int count)
    {
        std::unique_lock lock(mutex);
        changed.wait(lock, [this, count] { return entered >= count; });
    }

    void cancel()
    {
        const std::lock_guard lock(mutex);
        cancelled = true;
        changed.notify_all();
    }

    template <class Change> void change(Change apply)
    {
        const std::lock_guard lock(mutex);
        apply(items);
        changed.notify_all();
    }

    Items content()
    {
        const std::lock_guard lock(mutex);
        return items;
    }

    /// Waits until the store holds exactly these.
    void waitForContent(const Items& expected)
    {
        std::unique_lock lock(mutex);
        changed.wait(lock, [this, &expected] { return items == expected; });
    }

    void note(const std::string& write)
    {
        const std::lock_guard lock(mutex);
        writes.push_back(write);
    }

    std::vector<std::string> writeList()
    {
        const std::lock_guard lock(mutex);
        return writes;
    }

private:
    std::mutex mutex;
    std::condition_variable changed;
    Mode mode = Mode::Answering;
    bool cancelled = false;
    int entered = 0;
    Items items;
    std::vector<std::string> writes;
};

class ControlledStore final : public ItemStore
{
public:
    explicit ControlledStore(std::shared_ptr<StoreControl> control) : control(std::move(control)) {}

    [[nodiscard]] std::string title() const override { return "the store"; }

    ItemRead read(const std::string& account) override
    {
        const StoreControl::Mode mode = control->pass();
        if (mode == StoreControl::Mode::Unproven) {
            return {.state = ItemRead::State::Unproven};
        }
        if (mode != StoreControl::Mode::Answering && mode != StoreControl::Mode::RefusingWrites) {
            return {.state = ItemRead::State::Failed, .reason = "fails"};
        }
        const Items items = control->content();
        const auto found = items.find(account);
        if (found == items.end()) {
            return {.state = ItemRead::State::Missing};
        }
        return {.state = ItemRead::State::Found, .data = found->second};
    }

    Failure readAll(Items& items) override
    {
        if (control->pass() != StoreControl::Mode::Answering) {
            return "fails";
        }
        items = control->content();
        return std::nullopt;
    }

    Failure put(const std::string& account, const SecretBytes& data, Prompting prompting) override
    {
        return write("put " + account, prompting, [&](Items& items) { items[account] = data; });
    }

    Failure erase(const std::string& account, Prompting prompting) override
    {
        return write("erase " + account, prompting, [&](Items& items) { items.erase(account); });
    }

    Failure eraseAll(Prompting prompting) override
    {
        return write("erase all", prompting, [](Items& items) { items.clear(); });
    }

    void cancel() noexcept override { control->cancel(); }

    void leaveThread() override {}

private:
    template <class Change>
    Failure write(const std::string& name, Prompting prompting, Change apply)
    {
        control->note(name + (prompting == Prompting::Allowed ? "" : " (no prompt)"));
        if (control->pass() != StoreControl::Mode::Answering) {
            return "fails";
        }
        control->change(apply);
        return std::nullopt;
    }

    std::shared_ptr<StoreControl> control;
};

} // namespace secretservice
