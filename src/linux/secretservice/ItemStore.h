// Where secret items are really kept. A call takes as long as the keeper takes, so one worker
// thread makes them all; `cancel` alone may come from another. No exception leaves.
#pragma once

#include "linux/secretservice/SecretBytes.h"
#include "platform/Port.h"

#include <map>
#include <optional>
#include <string>

namespace secretservice {

/// Data by account.
using Items = std::map<std::string, SecretBytes>;

/// Why something could not be done, as the end of a sentence; nothing when it was done.
using Failure = std::optional<std::string>;

/// Whether the keeper may ask the user for a password on the way.
enum class Prompting
{
    Allowed,
    Forbidden
};

struct ItemRead
{
    enum class State
    {
        Found,
        Missing,
        Unproven, // nothing was found, where an item that exists might not be seen
        Failed
    };

    State state = State::Failed;
    SecretBytes data;
    std::string reason; // of `Failed`
};

class ItemStore : public platform::Port
{
public:
    /// What the user knows the keeper as, to begin a sentence with. Any thread.
    [[nodiscard]] virtual std::string title() const = 0;

    virtual ItemRead read(const std::string& account) = 0;

    /// Every item; `items` is as it was when that failed.
    virtual Failure readAll(Items& items) = 0;

    /// Makes `data` the account's one value, whatever was there before.
    virtual Failure
    put(const std::string& account, const SecretBytes& data, Prompting prompting) = 0;

    /// Done, too, when there is nothing to erase.
    virtual Failure erase(const std::string& account, Prompting prompting) = 0;

    virtual Failure eraseAll(Prompting prompting) = 0;

    /// Makes the call in progress and every later one fail at once. Any thread.
    virtual void cancel() noexcept = 0;

    /// The last call of the worker thread: lets go of what belongs to that thread.
    virtual void leaveThread() = 0;
};

} // namespace secretservice
