// A real process for tests, ended and waited for at the latest when its owner goes.
#pragma once

#include <csignal>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace processes {

class ChildProcess
{
public:
    /// `arguments[0]` is the path of the program.
    explicit ChildProcess(std::vector<std::string> arguments) { spawn(std::move(arguments)); }

    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    ChildProcess(ChildProcess&& other) noexcept : number(std::exchange(other.number, -1)) {}

    ChildProcess& operator=(ChildProcess&&) = delete;

    ~ChildProcess()
    {
        if (number > 0) {
            end();
        }
    }

    [[nodiscard]] pid_t pid() const { return number; }

    /// Kills it if need be, and waits for its end.
    void end()
    {
        ::kill(number, SIGKILL);
        wait();
    }

    /// Waits until it ends by itself.
    int wait()
    {
        int status = -1;
        ::waitpid(std::exchange(number, -1), &status, 0);
        return status;
    }

private:
    void spawn(std::vector<std::string> arguments)
    {
        std::vector<char*> pointers;
        pointers.reserve(arguments.size() + 1);
        for (std::string& argument : arguments) {
            pointers.push_back(argument.data());
        }
        pointers.push_back(nullptr);
        if (::posix_spawn(
                &number, arguments.front().c_str(), nullptr, nullptr, pointers.data(), environ
            ) != 0) {
            number = -1;
        }
    }

    pid_t number = -1;
};

} // namespace processes
