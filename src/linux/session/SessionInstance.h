// Makes a program the only one of its name in a graphical session. The name is held by a lock on a
// file, which is the truth, and a socket beside it, through which a second start reaches the first
// and others watch it (`SessionWatch`). Both are held until the process ends, however it ends, and
// whatever becomes of this object. One thread, but `announceExit` may be called on any.
#pragma once

#include "linux/descriptors/FileDescriptor.h"

#include <functional>
#include <string>

namespace session {

enum class Acquired
{
    First,          // also when there is no way to tell: running twice is better than not at all
    AlreadyRunning, // this process has nothing left to do and should end with 0
};

enum class SecondStart
{
    ActivatesFirst,
    IsQuiet,
};

class SessionInstance
{
public:
    /// `program` names it to all who look for it, in whichever process.
    explicit SessionInstance(const std::string& program);

    /// A second start handed over to this process. Called by `handle`.
    std::function<void()> onActivated;

    /// Why the name cannot be held or the first cannot be reached, in one line.
    std::function<void(const std::string& problem)> onProblem;

    /// Takes the name, or hands over to who has it. Waits at most a second for the first to answer.
    Acquired acquire(SecondStart secondStart = SecondStart::ActivatesFirst);

    /// To be polled for reading by the first; -1 for any other.
    int fd() const;

    /// Does what has come in; to be called when `fd` can be read. Never waits.
    void handle();

    /// Tells those that watch the status this process is about to end with. Only needed before
    /// _exit(): exit() and a return from main() tell it by themselves.
    void announceExit(int status);

private:
    struct Holding;

    void hold(descriptors::FileDescriptor directory, descriptors::FileDescriptor lock);
    void report(const std::string& problem) const;

    const std::string name;
    Holding* holding = nullptr; // belongs to the process, not to this object
};

} // namespace session
