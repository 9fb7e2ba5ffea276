// A session bus of its own. No service can be started by name on it but those that are given, so
// that nothing of the machine's own desktop takes part.
#pragma once

#include "desktop/ChildProcess.h"

#include <filesystem>
#include <memory>
#include <string>

namespace desktop {

class PrivateBus
{
public:
    /// Keeps its socket and its configuration in `folder`; `services` holds the *.service files of
    /// what may be started by name. Returns when clients can connect; throws `Failure`.
    PrivateBus(
        const std::filesystem::path& folder,
        const Environment& environment,
        const std::filesystem::path& services = {}
    );

    [[nodiscard]] const std::string& address() const { return busAddress; }

    [[nodiscard]] ChildProcess& process() { return daemon; }

    /// Whether some client owns the name now; false too when the bus is gone.
    [[nodiscard]] bool hasOwner(const std::string& busName) const;

private:
    std::string busAddress;
    ChildProcess daemon;
};

} // namespace desktop
