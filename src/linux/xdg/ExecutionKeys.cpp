#include "linux/xdg/ExecutionKeys.h"

#include "linux/xdg/ExecLine.h"
#include "linux/xdg/Interpreters.h"

#include <algorithm>

namespace xdg {

namespace {

using Kind = ExecutionKey::Kind;

std::string baseName(const std::string& path)
{
    return path.substr(path.rfind('/') + 1);
}

/// A program that is not there yet: whatever it will be, it will be in one of these places.
ExecutionKeys keysOfMissing(const ExecCommand& command, const ProgramResolver& programs)
{
    ExecutionKeys result;
    for (const std::string& place : programs.places(command.program)) {
        result.keys.push_back({Kind::Executable, place, command.fixedArguments, false, ""});
        result.keys.push_back({Kind::Script, place, command.fixedArguments, false, ""});
    }
    return result;
}

/// Of "python3 FILE" the file counts; of anything else that an interpreter runs, all arguments.
ExecutionKeys keysOfInterpreter(const ProgramFile& program, const ExecCommand& command)
{
    std::vector<std::string> arguments{command.program};
    arguments.insert(arguments.end(), command.fixedArguments.begin(), command.fixedArguments.end());
    const auto script = scriptArgument(program.path, arguments);
    if (script && script->starts_with('/')) {
        const auto after = std::find(arguments.begin(), arguments.end(), *script) + 1;
        return {{{Kind::Script, realPath(*script), {after, arguments.end()}, false, ""}}, {}};
    }
    if (command.fixedArguments.empty()) {
        return {};
    }
    return {{{Kind::Executable, program.path, command.fixedArguments, true, ""}}, {}};
}

/// The application that a launcher's arguments name, whatever the options on its way.
std::vector<std::string>
launchedBy(const std::string& launcher, const std::vector<std::string>& arguments)
{
    if (baseName(launcher) != "flatpak" || arguments.empty() || arguments.front() != "run") {
        return arguments;
    }
    const auto name = std::find_if(arguments.begin() + 1, arguments.end(), [](const auto& word) {
        return !word.starts_with('-');
    });
    return name == arguments.end() ? arguments : std::vector<std::string>{"run", *name};
}

ExecutionKeys keysOfLauncher(const ProgramFile& program, const ExecCommand& command)
{
    const std::string invokedAs =
        baseName(command.program) == baseName(program.path) ? "" : baseName(command.program);
    std::vector<std::string> fixed = launchedBy(program.path, command.fixedArguments);
    if (fixed.empty() && invokedAs.empty()) {
        return {};
    }
    return {{{Kind::Executable, program.path, std::move(fixed), true, invokedAs}}, {}};
}

} // namespace

ExecutionKeys executionKeys(const std::string& exec, const ProgramResolver& programs)
{
    const ExecCommand command = commandOf(exec);
    const std::optional<ProgramFile> program = programs.find(command.program);
    if (!program) {
        return keysOfMissing(command, programs);
    }
    if (program->isScript()) {
        return {
            {{Kind::Script, program->path, command.fixedArguments, false, ""}},
            {program->interpreter}};
    }
    if (isLauncher(program->path)) {
        return keysOfLauncher(*program, command);
    }
    if (isInterpreter(program->path)) {
        return keysOfInterpreter(*program, command);
    }
    return {{{Kind::Executable, program->path, command.fixedArguments, false, ""}}, {}};
}

} // namespace xdg
