#include "helper/AgentArrival.h"

#include "linux/session/SessionDirectory.h"
#include "platform/Call.h"

#include <array>
#include <string>

#include <sys/inotify.h>

namespace helper {

AgentArrival::AgentArrival()
{
    std::string problem;
    const descriptors::FileDescriptor directory = session::openSessionDirectory(problem);
    descriptors::FileDescriptor notifier(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    // A socket that can be connected to appears in one step, by being renamed.
    const bool watches =
        directory.isOpen() &&
        ::inotify_add_watch(
            notifier.get(), session::pathIn(directory, ".").c_str(), IN_MOVED_TO | IN_ONLYDIR
        ) >= 0;
    if (watches) {
        changes = std::move(notifier);
    }
}

void AgentArrival::wake()
{
    // Which name it was does not matter: whether the agent is there is asked anyway.
    std::array<char, 4096> ignored{};
    while (::read(changes.get(), ignored.data(), ignored.size()) > 0) {
    }
    platform::call(onArrived);
}

} // namespace helper
