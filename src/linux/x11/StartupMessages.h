// The messages by which launchers say what they are about to start: put together from the pieces
// that they come in, and read. Takes any bytes. One thread.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace x11 {

class StartupMessages
{
public:
    /// One piece of at most 20 bytes from a launcher's window. The whole message once it is there.
    std::optional<std::string> add(std::uint32_t window, bool begins, std::string_view piece);

private:
    std::map<std::uint32_t, std::string> unfinished;
};

/// The desktop entry that a message announces the start of, its path or its id; nothing for any
/// other message.
std::optional<std::string> launchedEntry(std::string_view message);

} // namespace x11
