// What a call on the main thread may wait for disk, bus or keyring before it goes on without: too
// short to be felt in a window, and in a lock that comes up. Any thread.
#pragma once

#include <chrono>

namespace process {

inline constexpr std::chrono::milliseconds LONGEST_WAIT{50};

/// Where another thread does the work; waking up and copying take the rest.
inline constexpr std::chrono::milliseconds LONGEST_WAIT_FOR_A_THREAD{45};

} // namespace process
