// Looks a word up in a short list. Any thread.
#pragma once

#include <algorithm>
#include <string_view>

namespace xdg {

template <typename Words> [[nodiscard]] bool isOneOf(std::string_view word, const Words& words)
{
    return std::find(words.begin(), words.end(), word) != words.end();
}

} // namespace xdg
