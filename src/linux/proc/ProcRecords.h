// The texts that /proc gives about a process, as pure functions that take any bytes.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <sys/types.h>

namespace proc {

/// What the kernel keeps of a process itself, apart from the program that it executes.
struct ProcessStatus
{
    char state = '?';
    pid_t parent = 0;
    int terminal = 0;
    bool isFork = false; // has executed nothing since it was forked off
    std::uint64_t startTime = 0;
};

/// What a process was given on its way, as far as it tells where it belongs.
struct ProcessEnvironment
{
    /// The desktop entry that a launcher says it started this very process for.
    std::optional<std::string> launchedEntry;
    std::string display;        // X display, empty where none is named
    std::string waylandDisplay; // the same for Wayland

    friend bool operator==(const ProcessEnvironment&, const ProcessEnvironment&) = default;
};

/// The fields of /proc/PID/stat; nothing when the text is not such a line.
std::optional<ProcessStatus> parseStatus(std::string_view text);

/// True when /proc/PID/status names the user as the real one.
bool isOwnedBy(std::string_view status, uid_t user);

/// True when /proc/PID/task/TID/status is that of a thread which will do nothing more: it has
/// ended, or is killed and has not noticed yet.
bool isEnding(std::string_view status);

/// Strings that each end in NUL; the last one may lack it.
std::vector<std::string> splitAtNul(std::string_view text);

/// The content of /proc/PID/environ of the process `pid`.
ProcessEnvironment parseEnvironment(std::string_view text, pid_t pid);

/// The application that the session's own manager, or a sandbox, put into the control group:
/// "org.gnome.Calculator" for ".../app-gnome-org.gnome.Calculator-1234.scope". Nothing where the
/// group is none of an application.
std::optional<std::string> applicationOfCgroup(std::string_view text);

} // namespace proc
