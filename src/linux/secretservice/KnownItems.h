// What is known of the items without asking: their last known values, and the writes that the
// keeper has still to take, in order. A write counts at once. No lock of its own.
#pragma once

#include "linux/secretservice/ItemStore.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>

namespace secretservice {

struct PendingWrite
{
    enum class Kind
    {
        Put,
        Erase,
        EraseAll
    };

    std::uint64_t id = 0;
    Kind kind = Kind::Put;
    std::string account; // empty for `EraseAll`
    SecretBytes data;    // of `Put`
    bool started = false;
};

class KnownItems
{
public:
    explicit KnownItems(Items items);

    [[nodiscard]] const SecretBytes* find(const std::string& account) const;

    [[nodiscard]] bool isEmpty() const { return items.empty(); }

    /// These take effect here, and queue what makes them so at the keeper. A queued write that has
    /// not started and that a newer one outdates is dropped. Each returns the write's id.
    std::uint64_t put(const std::string& account, SecretBytes data);
    std::uint64_t erase(const std::string& account);
    std::uint64_t eraseAll();

    [[nodiscard]] std::size_t pendingCount() const { return pending.size(); }

    [[nodiscard]] bool isPending(const std::string& account) const;
    [[nodiscard]] bool isPending(std::uint64_t id) const;

    /// The oldest write, which is from now on being made. There must be one.
    PendingWrite start();

    /// The started write was made, or was not and is kept for another attempt, unless outdated.
    void finish(std::uint64_t id, bool done);

    /// Takes over what the keeper said, except where a write is pending: that is newer.
    void learn(const std::string& account, const ItemRead& read);
    void learnAll(const Items& all);

private:
    std::uint64_t enqueue(PendingWrite write);

    Items items;
    std::deque<PendingWrite> pending;
    std::uint64_t lastId = 0;
};

} // namespace secretservice
