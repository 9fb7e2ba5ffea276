#include "linux/session/SessionInstance.h"

#include "linux/descriptors/ErrorText.h"
#include "linux/session/ExitRecord.h"
#include "linux/session/InstanceServer.h"
#include "linux/session/LocalSocket.h"
#include "linux/session/SessionDirectory.h"
#include "linux/session/SessionMessage.h"
#include "linux/session/SessionName.h"
#include "platform/Call.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <memory>

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace session {

struct SessionInstance::Holding
{
    /// Does nothing in a fork.
    void leave(int status) const
    {
        if (::getpid() == owner) {
            // First: who is not reached below looks there.
            writeExitRecord(directory, name, {owner, status});
            server->sendExit(status);
        }
    }

    pid_t owner = 0;
    std::string name;
    descriptors::FileDescriptor directory;
    descriptors::FileDescriptor lock;
    std::unique_ptr<InstanceServer> server;
};

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds PATIENCE(1000);
constexpr int PAUSE_MILLISECONDS = 2;

descriptors::FileDescriptor
openLock(const descriptors::FileDescriptor& directory, const std::string& name)
{
    constexpr int FLAGS = O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW;
    const std::string file = lockName(name);
    return descriptors::FileDescriptor(
        ::openat(directory.get(), file.c_str(), FLAGS, S_IRUSR | S_IWUSR)
    );
}

// Appears under its name in one step and replaces what a crashed predecessor left: whoever finds
// the socket of a living process can connect to it.
descriptors::FileDescriptor
openListener(const descriptors::FileDescriptor& directory, const std::string& name)
{
    const std::string fresh = name + ".new";
    const std::string final = socketName(name);
    ::unlinkat(directory.get(), fresh.c_str(), 0);
    descriptors::FileDescriptor listener = listenAt(pathIn(directory, fresh));
    const bool stands =
        listener.isOpen() &&
        ::renameat(directory.get(), fresh.c_str(), directory.get(), final.c_str()) == 0;
    return stands ? std::move(listener) : descriptors::FileDescriptor();
}

enum class HandOver
{
    Answered,
    NobodyThere, // not listening yet, or ended meanwhile
    NoAnswer,
};

HandOver handOver(const std::string& path, std::chrono::milliseconds patience)
{
    const descriptors::FileDescriptor socket = connectTo(path);
    const std::optional<Peer> first = peerOf(socket);
    if (!first.has_value() || first->user != ::geteuid() || !sendMessage(socket, ACTIVATE)) {
        return HandOver::NobodyThere;
    }
    if (!waitUntilReadable(socket, static_cast<int>(patience.count()))) {
        return HandOver::NoAnswer;
    }
    return receiveMessage(socket) == ACTIVATED ? HandOver::Answered : HandOver::NobodyThere;
}

} // namespace

SessionInstance::SessionInstance(const std::string& program) : name(sessionName(program)) {}

Acquired SessionInstance::acquire(SecondStart secondStart)
{
    std::string problem;
    descriptors::FileDescriptor directory = openSessionDirectory(problem);
    descriptors::FileDescriptor lock =
        directory.isOpen() ? openLock(directory, name) : descriptors::FileDescriptor();
    if (!lock.isOpen()) {
        report(
            "cannot tell whether " + name + " runs already: " + problem + descriptors::errorText()
        );
        return Acquired::First;
    }
    const Clock::time_point limit = Clock::now() + PATIENCE;
    const std::string path = pathIn(directory, socketName(name));
    for (;;) {
        if (::flock(lock.get(), LOCK_EX | LOCK_NB) == 0) {
            hold(std::move(directory), std::move(lock));
            return Acquired::First;
        }
        if (secondStart == SecondStart::IsQuiet) {
            return Acquired::AlreadyRunning;
        }
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(limit - Clock::now());
        const HandOver outcome = handOver(path, std::max(left, std::chrono::milliseconds(0)));
        if (outcome == HandOver::Answered) {
            return Acquired::AlreadyRunning;
        }
        if (outcome == HandOver::NoAnswer || left.count() <= 0) {
            report(name + " runs already but does not answer");
            return Acquired::AlreadyRunning;
        }
        ::poll(nullptr, 0, PAUSE_MILLISECONDS);
    }
}

void SessionInstance::hold(descriptors::FileDescriptor directory, descriptors::FileDescriptor lock)
{
    descriptors::FileDescriptor listener = openListener(directory, name);
    if (!listener.isOpen()) {
        report(name + " cannot be reached by others: " + descriptors::errorText());
    }
    removeExitRecord(directory, name);
    auto held = std::make_unique<Holding>();
    held->owner = ::getpid();
    held->name = name;
    held->directory = std::move(directory);
    held->lock = std::move(lock);
    held->server = std::make_unique<InstanceServer>(std::move(listener));
    holding = held.release();
    ::on_exit([](int status, void* data) { static_cast<Holding*>(data)->leave(status); }, holding);
}

int SessionInstance::fd() const
{
    return holding != nullptr ? holding->server->fd() : -1;
}

void SessionInstance::handle()
{
    if (holding == nullptr) {
        return;
    }
    for (int left = holding->server->receive(); left > 0; --left) {
        platform::call(onActivated);
    }
}

void SessionInstance::announceExit(int status)
{
    if (holding != nullptr) {
        holding->leave(status);
    }
}

void SessionInstance::report(const std::string& problem) const
{
    platform::call(onProblem, problem);
}

} // namespace session
