// What is done later for somebody who may be gone by then: a member of whoever that is. Blocks that
// it guards do nothing once it has ended. It ends, and they run, on one thread; any may guard.
#pragma once

#include <memory>
#include <utility>

namespace platform {

class Lifetime
{
    struct Token
    {
    };

public:
    /// For a while in which this may end, as during a callback.
    class Watch
    {
    public:
        [[nodiscard]] bool hasEnded() const { return token.expired(); }

    private:
        friend class Lifetime;

        explicit Watch(std::weak_ptr<const Token> token) : token(std::move(token)) {}

        std::weak_ptr<const Token> token;
    };

    [[nodiscard]] Watch watch() const { return Watch(token); }

    /// `block`, with whatever arguments, as long as this has not ended.
    template <typename Block> [[nodiscard]] auto guard(Block block) const
    {
        return [watch = watch(), block = std::move(block)](auto&&... arguments) {
            if (!watch.hasEnded()) {
                block(std::forward<decltype(arguments)>(arguments)...);
            }
        };
    }

    Lifetime() = default;
    Lifetime(const Lifetime&) = delete;
    Lifetime& operator=(const Lifetime&) = delete;
    Lifetime(Lifetime&&) = delete;
    Lifetime& operator=(Lifetime&&) = delete;
    ~Lifetime() = default;

private:
    std::shared_ptr<const Token> token = std::make_shared<const Token>();
};

} // namespace platform
