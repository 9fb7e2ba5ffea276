// Work on a thread of its own that nobody waits for.
#pragma once

#include <system_error>
#include <thread>
#include <utility>

namespace process {

/// The work must own what it uses. False where the system has no thread to give: nothing is done
/// then.
template <typename Work> [[nodiscard]] bool runAside(Work work)
{
    try {
        std::thread(std::move(work)).detach();
        return true;
    } catch (const std::system_error&) {
        return false;
    }
}

} // namespace process
