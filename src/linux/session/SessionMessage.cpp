#include "linux/session/SessionMessage.h"

#include <charconv>
#include <string_view>

namespace session {

namespace {

constexpr std::string_view EXIT = "exit ";

// What of a status reaches the process that waits for another.
constexpr unsigned STATUS_BITS = 0xFF;

} // namespace

std::string exitMessage(int status)
{
    return std::string(EXIT) + std::to_string(static_cast<unsigned>(status) & STATUS_BITS);
}

std::optional<int> exitStatusIn(const std::string& message)
{
    const std::string_view text = message;
    if (!text.starts_with(EXIT)) {
        return std::nullopt;
    }
    const std::string_view digits = text.substr(EXIT.size());
    int status = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), status);
    const bool whole = error == std::errc() && end == digits.data() + digits.size();
    return whole ? std::optional<int>(status) : std::nullopt;
}

} // namespace session
