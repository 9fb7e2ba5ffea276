// A program that a test talks with, line by line, through a socket whose number is the program's
// last argument.
#pragma once

#include "desktop/ChildProcess.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace processes {

inline constexpr std::chrono::seconds PATIENCE(20);

class Dialogue
{
public:
    /// Starts the program in `environment`. Throws `desktop::Failure` when it cannot be executed.
    Dialogue(std::vector<std::string> arguments, const desktop::Environment& environment);
    Dialogue(const Dialogue&) = delete;
    Dialogue& operator=(const Dialogue&) = delete;
    Dialogue(Dialogue&&) = delete;
    Dialogue& operator=(Dialogue&&) = delete;
    ~Dialogue();

    desktop::ChildProcess& process() { return *child; }

    void say(const std::string& line) const;

    /// The next line it says; nothing when it ends or `PATIENCE` passes first.
    std::optional<std::string> hear();

    /// Ends it by SIGKILL and waits for that.
    void kill();

private:
    std::unique_ptr<desktop::ChildProcess> child;
    int wire = -1;
    std::string unread;
};

} // namespace processes
