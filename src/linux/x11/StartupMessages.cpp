#include "linux/x11/StartupMessages.h"

#include <algorithm>
#include <utility>

namespace x11 {

namespace {

// No launcher says more, and no desktop has more of them at work at once.
constexpr std::size_t LONGEST_MESSAGE = 8192;
constexpr std::size_t MOST_UNFINISHED = 64;

/// Takes the value of one key away: as it stands, or with quotes and escapes resolved.
std::string takeValue(std::string_view& rest)
{
    std::string value;
    bool quoted = false;
    while (!rest.empty() && (quoted || rest.front() != ' ')) {
        const char character = rest.front();
        rest.remove_prefix(1);
        if (character == '"') {
            quoted = !quoted;
        } else if (character == '\\' && !rest.empty()) {
            value.push_back(rest.front());
            rest.remove_prefix(1);
        } else {
            value.push_back(character);
        }
    }
    return value;
}

} // namespace

std::optional<std::string>
StartupMessages::add(std::uint32_t window, bool begins, std::string_view piece)
{
    if (begins) {
        if (unfinished.size() >= MOST_UNFINISHED) {
            unfinished.clear();
        }
        unfinished[window].clear();
    }
    const auto found = unfinished.find(window);
    if (found == unfinished.end()) {
        return std::nullopt;
    }
    const std::size_t end = piece.find('\0');
    found->second.append(piece.substr(0, end));
    if (end != std::string_view::npos) {
        std::string message = std::move(found->second);
        unfinished.erase(found);
        return message;
    }
    if (found->second.size() > LONGEST_MESSAGE) {
        unfinished.erase(found);
    }
    return std::nullopt;
}

std::optional<std::string> launchedEntry(std::string_view message)
{
    constexpr std::string_view START = "new:";
    constexpr std::string_view KEY = "APPLICATION_ID";
    if (!message.starts_with(START)) {
        return std::nullopt;
    }
    message.remove_prefix(START.size());
    while (!message.empty()) {
        message.remove_prefix(std::min(message.find_first_not_of(' '), message.size()));
        const std::size_t equals = message.find('=');
        if (equals == std::string_view::npos) {
            return std::nullopt;
        }
        const std::string_view key = message.substr(0, equals);
        message.remove_prefix(equals + 1);
        std::string value = takeValue(message);
        if (key == KEY) {
            return value.empty() ? std::nullopt : std::optional(std::move(value));
        }
    }
    return std::nullopt;
}

} // namespace x11
