// A text that somebody typed for nobody to see. It is overwritten before its memory is given back,
// so that memory which is used again, or written to a disk, does not hold it.
#pragma once

#include <string>

namespace platform {

/// What remains is an empty text.
inline void wipe(std::string& text)
{
    text.resize(text.capacity());
    // Nobody reads the memory afterwards; only `volatile` keeps the compiler from leaving this out.
    volatile char* const bytes = text.data();
    for (std::size_t index = 0; index < text.size(); ++index) {
        bytes[index] = 0;
    }
    text.clear();
}

class Secret
{
public:
    /// `text` is wiped.
    explicit Secret(std::string&& text) : held(text) { wipe(text); }

    Secret(const Secret&) = delete;
    Secret& operator=(const Secret&) = delete;
    Secret(Secret&&) = delete;
    Secret& operator=(Secret&&) = delete;

    ~Secret() { wipe(held); }

    [[nodiscard]] const std::string& text() const { return held; }

private:
    std::string held;
};

} // namespace platform
