// How a program is started that is to live on its own: in a session of its own, away from the
// terminal of whoever started this one, and with signals as a program expects to find them.
// `posix_spawn` takes both parts. One thread at a time.
#pragma once

#include <csignal>

#include <spawn.h>

namespace process {

class SpawnSettings
{
public:
    SpawnSettings()
    {
        ::posix_spawn_file_actions_init(&fileActions);
        ::posix_spawnattr_init(&spawnAttributes);
        sigset_t signals = {};
        ::sigemptyset(&signals);
        ::posix_spawnattr_setsigmask(&spawnAttributes, &signals);
        ::sigfillset(&signals);
        ::posix_spawnattr_setsigdefault(&spawnAttributes, &signals);
        constexpr auto FLAGS = POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF;
        ::posix_spawnattr_setflags(&spawnAttributes, static_cast<short>(FLAGS));
    }

    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;
    SpawnSettings(SpawnSettings&&) = delete;
    SpawnSettings& operator=(SpawnSettings&&) = delete;

    ~SpawnSettings()
    {
        ::posix_spawn_file_actions_destroy(&fileActions);
        ::posix_spawnattr_destroy(&spawnAttributes);
    }

    /// The program gets none of this one's files from that number on.
    void closeFrom(int descriptor)
    {
        ::posix_spawn_file_actions_addclosefrom_np(&fileActions, descriptor);
    }

    const posix_spawn_file_actions_t* actions() const { return &fileActions; }

    const posix_spawnattr_t* attributes() const { return &spawnAttributes; }

private:
    posix_spawn_file_actions_t fileActions{};
    posix_spawnattr_t spawnAttributes{};
};

} // namespace process
