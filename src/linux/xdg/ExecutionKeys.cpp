#include "linux/xdg/ExecutionKeys.h"

#include "linux/files/Names.h"
#include "linux/xdg/ExecLine.h"
#include "linux/xdg/FileText.h"
#include "linux/xdg/Interpreters.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string_view>
#include <utility>

namespace xdg {

namespace {

using Kind = ExecutionKey::Kind;
using Words = std::vector<std::string>;

ExecutionKey keyOf(Kind kind, const std::string& path, Words arguments)
{
    return {.kind = kind, .path = path, .fixedArguments = std::move(arguments)};
}

/// Of a program that runs others, too.
ExecutionKey
sharedKeyOf(Kind kind, const std::string& path, Words arguments, const std::string& name = "")
{
    return {
        .kind = kind,
        .path = path,
        .fixedArguments = std::move(arguments),
        .shared = true,
        .invokedAs = name};
}

/// A program that is not there yet: whatever it will be, it will be in one of these places.
ExecutionKeys keysOfMissing(const ExecCommand& command, const ProgramResolver& programs)
{
    ExecutionKeys result;
    for (const std::string& place : programs.places(command.program)) {
        result.keys.push_back(keyOf(Kind::Executable, place, command.fixedArguments));
        result.keys.push_back(keyOf(Kind::Script, place, command.fixedArguments));
    }
    return result;
}

/// Where a file is that is named relative to the folder; empty where the folder does not tell.
std::string placeIn(const std::filesystem::path& folder, const std::string& name)
{
    return folder.is_absolute() ? (folder / name).lexically_normal().string() : std::string();
}

/// The script as a process of any folder could name it; nothing where that cannot be told.
std::optional<std::string> scriptOf(const std::string& named, const std::filesystem::path& folder)
{
    const std::string place = named.starts_with('/') ? named : placeIn(folder, named);
    const bool known = named.starts_with('/') || stampOf(place).has_value();
    return known ? std::optional(realPath(place)) : std::nullopt;
}

/// Of "python3 FILE" the file counts; of anything else that an interpreter runs, all arguments.
ExecutionKeys keysOfInterpreter(
    const ProgramFile& program, const ExecCommand& command, const std::filesystem::path& folder
)
{
    std::vector<std::string> arguments{command.program};
    arguments.insert(arguments.end(), command.fixedArguments.begin(), command.fixedArguments.end());
    const auto named = scriptArgument(program.path, arguments);
    if (const auto script = named ? scriptOf(*named, folder) : std::nullopt) {
        const auto after = std::find(arguments.begin(), arguments.end(), *named) + 1;
        return {{keyOf(Kind::Script, *script, {after, arguments.end()})}, {}};
    }
    if (command.fixedArguments.empty()) {
        return {};
    }
    return {{sharedKeyOf(Kind::Executable, program.path, command.fixedArguments)}, {}};
}

/// The application that a launcher's arguments name, whatever the options on its way.
std::vector<std::string>
launchedBy(const std::string& launcher, const std::vector<std::string>& arguments)
{
    if (files::baseName(launcher) != "flatpak" || arguments.empty() || arguments.front() != "run") {
        return arguments;
    }
    const auto name = std::find_if(arguments.begin() + 1, arguments.end(), [](const auto& word) {
        return !word.starts_with('-');
    });
    return name == arguments.end() ? arguments : std::vector<std::string>{"run", *name};
}

ExecutionKeys keysOfLauncher(const ProgramFile& program, const ExecCommand& command)
{
    const std::string_view called = files::baseName(command.program);
    // What a script was called by, its interpreter has in another place or not at all.
    const bool isAlias = !program.isScript() && called != files::baseName(program.path);
    const std::string invokedAs(isAlias ? called : "");
    std::vector<std::string> fixed = launchedBy(program.path, command.fixedArguments);
    if (fixed.empty() && invokedAs.empty()) {
        return {};
    }
    if (program.isScript()) {
        return {{sharedKeyOf(Kind::Script, program.path, std::move(fixed))}, {program.interpreter}};
    }
    return {{sharedKeyOf(Kind::Executable, program.path, std::move(fixed), invokedAs)}, {}};
}

} // namespace

ExecutionKeys executionKeys(
    const std::string& exec, const ProgramResolver& programs, const std::string& workingFolder
)
{
    ExecCommand command = commandOf(exec);
    const std::filesystem::path folder = std::filesystem::path(workingFolder) / command.folder;
    const bool relative =
        !command.program.starts_with('/') && command.program.find('/') != std::string::npos;
    if (relative && folder.is_absolute()) {
        command.program = placeIn(folder, command.program);
    }
    const std::optional<ProgramFile> program = programs.find(command.program);
    if (!program) {
        return keysOfMissing(command, programs);
    }
    if (isLauncher(program->path)) {
        return keysOfLauncher(*program, command);
    }
    if (program->isScript()) {
        return {
            {keyOf(Kind::Script, program->path, command.fixedArguments)}, {program->interpreter}};
    }
    if (isInterpreter(program->path)) {
        return keysOfInterpreter(*program, command, folder);
    }
    return {{keyOf(Kind::Executable, program->path, command.fixedArguments)}, {}};
}

} // namespace xdg
