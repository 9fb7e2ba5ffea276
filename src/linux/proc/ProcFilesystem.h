// Reads facts about processes from /proc. Keeps nothing but what it was made with, so any thread
// may call. Whatever cannot be read (the process ended, or is not ours to look at) is an empty
// answer.
#pragma once

#include "linux/proc/ProcessFacts.h"

#include <optional>
#include <string>
#include <vector>

#include <unistd.h>

namespace proc {

/// The part of the facts that lives as long as the process itself, whatever it executes.
struct ProcessStatus
{
    char state = '?';
    pid_t parent = 0;
    int terminal = 0;
    std::uint64_t startTime = 0;
};

class ProcFilesystem
{
public:
    /// Only processes of `user` are seen. `root` is where the file system is mounted.
    explicit ProcFilesystem(uid_t user = ::getuid(), std::string root = "/proc");

    /// Nothing for a process of somebody else, and for one that is just executing another program:
    /// its arguments are not there yet, and that other program is announced by itself.
    [[nodiscard]] std::optional<ProcessFacts> facts(pid_t pid) const;

    [[nodiscard]] std::optional<ProcessStatus> status(pid_t pid) const;

    [[nodiscard]] std::optional<std::string> executable(pid_t pid) const;

    /// Empty also for a process that cannot be looked at.
    [[nodiscard]] std::vector<std::string> arguments(pid_t pid) const;

    /// The user's processes, in no order.
    [[nodiscard]] std::vector<pid_t> processes() const;

    /// The facts of all the user's processes, oldest first.
    [[nodiscard]] std::vector<ProcessFacts> allFacts() const;

    /// Parent, grandparent and so on, without the first process of all.
    [[nodiscard]] std::vector<pid_t> ancestors(pid_t pid) const;

    /// The desktop entry that a launcher says it started this very process for.
    [[nodiscard]] std::optional<std::string> launchClaim(pid_t pid) const;

    /// True while that same process runs; one that ended and was not waited for does not.
    [[nodiscard]] bool alive(pid_t pid, std::uint64_t startTime) const;

private:
    [[nodiscard]] std::string folderOf(pid_t pid) const;

    uid_t user;
    std::string root;
};

/// The fields of /proc/PID/stat; nothing when the text is not such a line.
std::optional<ProcessStatus> parseStatus(const std::string& text);

/// Strings that each end in NUL; the last one may lack it.
std::vector<std::string> splitAtNul(const std::string& text);

} // namespace proc
