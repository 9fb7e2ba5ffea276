// Reads facts about processes from /proc. Keeps nothing but what it was given at first, so any
// thread may call. Whatever cannot be read (the process ended, or is not ours to look at) is an
// empty answer.
#pragma once

#include "linux/proc/ProcRecords.h"
#include "linux/proc/ProcessFacts.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <unistd.h>

namespace proc {

class ProcFilesystem
{
public:
    /// Only processes of `user` are seen. `root` is where the file system is mounted.
    explicit ProcFilesystem(uid_t user = ::getuid(), std::string root = "/proc");

    /// Whether a process that executes the file is worth a further look. The path is empty where it
    /// must not be read.
    using Interest = std::function<bool(pid_t pid, const std::string& executable)>;

    /// Facts could not be read for want of descriptors. Set before the others are called; called by
    /// them.
    std::function<void()> onExhausted;

    /// Nothing for a process of somebody else, for one that is just executing another program (its
    /// arguments are not there yet, and that other program is announced by itself), and for one
    /// that is of no interest. Unset, all are.
    [[nodiscard]] std::optional<ProcessFacts> facts(pid_t pid, const Interest& interest = {}) const;

    /// The same of a process that is not executing anything just now: its arguments may be empty.
    [[nodiscard]] std::optional<ProcessFacts> settledFacts(pid_t pid) const;

    [[nodiscard]] std::optional<ProcessStatus> status(pid_t pid) const;

    [[nodiscard]] std::optional<std::string> executable(pid_t pid) const;

    /// Empty also for a process that cannot be looked at.
    [[nodiscard]] std::vector<std::string> arguments(pid_t pid) const;

    /// Processes that keep their memory to themselves: to find the user's among those takes long.
    enum class Closed
    {
        Included,
        LeftOut,
    };

    /// The user's processes, in no order.
    [[nodiscard]] std::vector<pid_t> processes(Closed closed = Closed::Included) const;

    /// The facts of all the user's processes, oldest first.
    [[nodiscard]] std::vector<ProcessFacts> allFacts() const;

    /// Parent, grandparent and so on, without the first process of all.
    [[nodiscard]] std::vector<pid_t> ancestors(pid_t pid) const;

    /// Empty where it cannot be read.
    [[nodiscard]] ProcessEnvironment environment(pid_t pid) const;

    /// The application that the process's control group names.
    [[nodiscard]] std::optional<std::string> cgroupApplication(pid_t pid) const;

    /// True while that same process runs; one that ended and was not waited for does not.
    [[nodiscard]] bool alive(pid_t pid, std::uint64_t startTime) const;

private:
    [[nodiscard]] std::string folderOf(pid_t pid) const;
    [[nodiscard]] bool isOfUser(pid_t pid, uid_t owner) const;
    void noteExhaustion() const;
    [[nodiscard]] bool hasLivingThread(pid_t pid) const;
    [[nodiscard]] std::optional<ProcessFacts>
    read(pid_t pid, const Interest& interest, bool settled) const;

    uid_t user;
    std::string root;
};

} // namespace proc
