// A program that takes a name in the session and then does, line by line, what a test tells it.
//   session_peer <name> <activating|quiet> <socket to the test>
#include "linux/session/SessionInstance.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <string>
#include <vector>

#include <poll.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

class Peer
{
public:
    Peer(const std::string& name, int wire) : instance(name), wire(wire)
    {
        instance.onActivated = [this] { say("activated"); };
        instance.onProblem = [this](const std::string& problem) { say(problem); };
    }

    int run(session::SecondStart secondStart)
    {
        if (instance.acquire(secondStart) == session::Acquired::AlreadyRunning) {
            say("already running");
            return 0;
        }
        say("first");
        std::array<pollfd, 2> wanted = {{{wire, POLLIN, 0}, {instance.fd(), POLLIN, 0}}};
        for (;;) {
            ::poll(wanted.data(), wanted.size(), -1);
            if (wanted[1].revents != 0) {
                instance.handle();
            } else if (const std::string command = hear(); command == "return 4") {
                return 4;
            } else {
                obey(command);
            }
        }
    }

private:
    void say(const std::string& text) const
    {
        const std::string line = text + "\n";
        ::send(wire, line.data(), line.size(), MSG_NOSIGNAL);
    }

    // One line comes at a time: the test waits for what it causes.
    std::string hear() const
    {
        std::array<char, 64> buffer{};
        const ssize_t size = ::recv(wire, buffer.data(), buffer.size(), 0);
        return size > 0 ? std::string(buffer.data(), static_cast<std::size_t>(size - 1)) : "";
    }

    void obey(const std::string& command)
    {
        if (command == "exit 0" || command.empty()) {
            leaveThroughExit(0);
        } else if (command == "exit 3") {
            leaveThroughExit(3);
        } else if (command == "announce 0") {
            instance.announceExit(0);
            ::_exit(0);
        } else if (command == "_exit 0") {
            ::_exit(0);
        } else if (command == "abort") {
            std::abort();
        } else if (command == "fork") {
            exitInFork();
        }
    }

    [[noreturn]] static void leaveThroughExit(int status)
    {
        std::exit(status); // NOLINT(concurrency-mt-unsafe): exit() itself is what is tested
    }

    // A fork that leaves through exit() must not speak for this process.
    void exitInFork() const
    {
        const pid_t child = ::fork();
        if (child == 0) {
            leaveThroughExit(9);
        }
        ::waitpid(child, nullptr, 0);
        say("forked");
    }

    session::SessionInstance instance;
    const int wire;
};

} // namespace

int main(int count, char** arguments)
{
    const std::vector<std::string> words(arguments, arguments + count);
    Peer peer(words.at(1), std::stoi(words.at(3)));
    return peer.run(
        words.at(2) == "quiet" ? session::SecondStart::IsQuiet
                               : session::SecondStart::ActivatesFirst
    );
}
