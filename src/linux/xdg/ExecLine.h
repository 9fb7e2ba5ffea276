// Reads the command line of a desktop entry. Pure, and takes any bytes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace xdg {

/// The program that a command line is about, and the arguments that it always gets.
struct ExecCommand
{
    std::string program; // empty where there is none
    std::vector<std::string> fixedArguments;
    std::string folder{}; // to which it goes before; empty where it stays where it is

    friend bool operator==(const ExecCommand&, const ExecCommand&) = default;
};

/// Without field codes, and without the wrappers that only prepare the program's start: `env`,
/// assignments, `nice`, `pkexec`, `sh -c` and the like.
ExecCommand commandOf(std::string_view exec);

/// The arguments of a command line, field codes included.
std::vector<std::string> splitExec(std::string_view exec);

/// One argument as it is written in a command line: quoted where it must be, and safe from being
/// taken for a field code.
std::string quotedForExec(const std::string& argument);

} // namespace xdg
