#include "processes/Dialogue.h"

#include "desktop/Failure.h"

#include <array>
#include <csignal>
#include <utility>

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace processes {

namespace {

using Clock = std::chrono::steady_clock;

bool waitReadable(int descriptor, Clock::time_point limit)
{
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(limit - Clock::now());
    pollfd wanted = {descriptor, POLLIN, 0};
    return left.count() > 0 && ::poll(&wanted, 1, static_cast<int>(left.count())) > 0;
}

} // namespace

Dialogue::Dialogue(std::vector<std::string> arguments, const desktop::Environment& environment)
{
    std::array<int, 2> ends = {-1, -1};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        throw desktop::Failure("no pair of sockets");
    }
    wire = ends[0];
    arguments.push_back(std::to_string(ends[1]));
    desktop::ChildProcess::Command command;
    command.arguments = std::move(arguments);
    command.environment = environment;
    command.inheritedDescriptors = {ends[1]};
    child = std::make_unique<desktop::ChildProcess>(command);
    ::close(ends[1]);
}

Dialogue::~Dialogue()
{
    kill();
    ::close(wire);
}

void Dialogue::say(const std::string& line) const
{
    const std::string text = line + "\n";
    if (::send(wire, text.data(), text.size(), MSG_NOSIGNAL) != static_cast<ssize_t>(text.size())) {
        throw desktop::Failure("a program does not listen");
    }
}

std::optional<std::string> Dialogue::hear()
{
    const Clock::time_point limit = Clock::now() + PATIENCE;
    for (;;) {
        const std::size_t end = unread.find('\n');
        if (end != std::string::npos) {
            std::string line = unread.substr(0, end);
            unread.erase(0, end + 1);
            return line;
        }
        std::array<char, 512> buffer{};
        const ssize_t size =
            waitReadable(wire, limit) ? ::recv(wire, buffer.data(), buffer.size(), 0) : 0;
        if (size <= 0) {
            return std::nullopt;
        }
        unread.append(buffer.data(), static_cast<std::size_t>(size));
    }
}

void Dialogue::kill()
{
    child->signal(SIGKILL);
    child->waitForEnd(PATIENCE);
}

} // namespace processes
