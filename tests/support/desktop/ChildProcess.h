// A program that was started and that ends, at the latest, with the object (first asked to, then
// killed) or with this process. Its output goes to files, so that it never waits for a reader.
#pragma once

#include <chrono>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace desktop {

/// The whole environment of a program.
using Environment = std::map<std::string, std::string>;

class ChildProcess
{
public:
    struct Command
    {
        std::vector<std::string> arguments; // the program first, looked up in PATH
        Environment environment;
        std::filesystem::path output = "/dev/null"; // standard output, appended to
        std::filesystem::path error = "/dev/null";  // standard error, appended to
        std::string input;                          // given on standard input, which then ends
        std::vector<int> inheritedDescriptors;      // open in the program under the same number
        bool endsWithThisProcess = true;
    };

    /// Throws `Failure` when the program cannot be executed.
    explicit ChildProcess(const Command& command);

    /// The same in this process's environment.
    explicit ChildProcess(std::vector<std::string> arguments);

    ~ChildProcess();
    ChildProcess(ChildProcess&& other) noexcept;
    ChildProcess& operator=(ChildProcess&& other) noexcept;
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    [[nodiscard]] pid_t id() const { return process; }

    [[nodiscard]] bool isRunning();

    /// The wait status as waitpid gives it, or nothing when it still runs at the end of the
    /// timeout.
    std::optional<int> waitForEnd(std::chrono::milliseconds timeout);

    /// The exit status; nothing when it still runs or was ended by a signal.
    std::optional<int> waitForExitStatus(std::chrono::milliseconds timeout);

    void signal(int number);

    /// Kills it where it still runs, and waits for its end.
    void end();

private:
    void stop();

    pid_t process = -1;
    int descriptor = -1; // pidfd
    std::optional<int> ended;
};

} // namespace desktop
