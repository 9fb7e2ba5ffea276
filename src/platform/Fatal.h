// The end of the road for a broken promise of our own code. A lock that goes on in an unknown state
// is worse than an agent that stops: the helper starts it again and the blocked application is
// locked anew. Any thread.
#pragma once

#include <string_view>

namespace platform {

/// Writes "fatal: " and `message` as one line to standard error, then aborts. Never returns.
[[noreturn]] void fatal(std::string_view message);

} // namespace platform
