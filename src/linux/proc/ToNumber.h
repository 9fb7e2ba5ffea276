// Numbers as the kernel writes them. Any thread.
#pragma once

#include <charconv>
#include <string_view>
#include <system_error>

namespace proc {

/// False, and no promise about the number, where the text is not one number and nothing else.
template <typename Number> bool toNumber(std::string_view text, Number& number)
{
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size();
}

} // namespace proc
