#include "linux/proc/ProcRecords.h"

#include "linux/proc/ToNumber.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <csignal>

namespace proc {

namespace {

/// Takes the first word away.
std::string_view takeWord(std::string_view& rest)
{
    constexpr std::string_view BLANKS = " \t";
    rest.remove_prefix(std::min(rest.find_first_not_of(BLANKS), rest.size()));
    const std::string_view word = rest.substr(0, rest.find_first_of(" \t\n"));
    rest.remove_prefix(word.size());
    return word;
}

/// The first word of the line that begins with the label; empty where there is none.
std::string_view firstWordOf(std::string_view text, std::string_view label)
{
    const std::size_t line = text.find(label);
    if (line == std::string_view::npos) {
        return {};
    }
    std::string_view rest = text.substr(line + label.size());
    return takeWord(rest);
}

bool removeSuffix(std::string_view& text, std::string_view suffix)
{
    if (!text.ends_with(suffix)) {
        return false;
    }
    text.remove_suffix(suffix.size());
    return true;
}

/// Names of units write "-" inside a name as "\x2d".
std::string withoutEscapes(std::string_view text)
{
    constexpr std::size_t LENGTH = 4; // of "\x2d"
    constexpr int HEXADECIMAL = 16;
    std::string result;
    while (!text.empty()) {
        unsigned char value = 0;
        const bool escaped =
            text.size() >= LENGTH && text.starts_with("\\x") &&
            std::from_chars(text.data() + 2, text.data() + LENGTH, value, HEXADECIMAL).ptr ==
                text.data() + LENGTH;
        result.push_back(escaped ? static_cast<char>(value) : text.front());
        text.remove_prefix(escaped ? LENGTH : 1);
    }
    return result;
}

/// "app-LAUNCHER-ID-RANDOM" and "app-LAUNCHER-ID@RANDOM", where the launcher may be missing.
std::optional<std::string> applicationOfUnit(std::string_view unit)
{
    if (!unit.starts_with("app-")) {
        return std::nullopt;
    }
    unit.remove_prefix(std::string_view("app-").size());
    const bool service = removeSuffix(unit, ".service");
    if (!service && !removeSuffix(unit, ".scope") && !removeSuffix(unit, ".slice")) {
        return std::nullopt;
    }
    if (const std::size_t at = unit.find('@'); at != std::string_view::npos) {
        unit = unit.substr(0, at);
    } else if (!service) {
        unit = unit.substr(0, unit.rfind('-'));
    }
    const std::size_t launcher = unit.rfind('-');
    if (launcher != std::string_view::npos) {
        unit.remove_prefix(launcher + 1);
    }
    return unit.empty() ? std::nullopt : std::optional(withoutEscapes(unit));
}

/// "snap.NAME.APP.RANDOM.scope", or ".service": its entry is "NAME_APP".
std::optional<std::string> applicationOfSnap(std::string_view unit)
{
    if (!unit.starts_with("snap.")) {
        return std::nullopt;
    }
    unit.remove_prefix(std::string_view("snap.").size());
    const std::string_view name = unit.substr(0, unit.find('.'));
    unit.remove_prefix(std::min(name.size() + 1, unit.size()));
    const std::string_view program = unit.substr(0, unit.find_first_of(".-"));
    if (name.empty() || program.empty()) {
        return std::nullopt;
    }
    return std::string(name).append("_").append(program);
}

/// What the innermost unit of the group that names an application names.
std::optional<std::string> applicationOfGroup(std::string_view line)
{
    while (!line.empty()) {
        const std::size_t slash = line.rfind('/');
        const bool outermost = slash == std::string_view::npos;
        const std::string_view unit = outermost ? line : line.substr(slash + 1);
        std::optional<std::string> application = applicationOfUnit(unit);
        if (!application) {
            application = applicationOfSnap(unit);
        }
        if (application) {
            return application;
        }
        line = outermost ? std::string_view() : line.substr(0, slash);
    }
    return std::nullopt;
}

} // namespace

std::optional<ProcessStatus> parseStatus(std::string_view text)
{
    // The name in parentheses may itself hold anything, parentheses included.
    const std::size_t name = text.rfind(')');
    if (name == std::string_view::npos) {
        return std::nullopt;
    }
    constexpr std::size_t FIELDS = 20; // up to the start time, which is the 22nd of the line
    std::array<std::string_view, FIELDS> fields;
    std::string_view rest = text.substr(name + 1);
    std::generate(fields.begin(), fields.end(), [&rest] { return takeWord(rest); });
    ProcessStatus status;
    if (fields[0].size() != 1 || !toNumber(fields[1], status.parent) ||
        !toNumber(fields[4], status.terminal) || !toNumber(fields[19], status.startTime)) {
        return std::nullopt;
    }
    constexpr std::uint64_t FORKED = 0x40; // the kernel's PF_FORKNOEXEC
    std::uint64_t flags = 0;
    status.isFork = toNumber(fields[6], flags) && (flags & FORKED) != 0;
    status.state = fields[0].front();
    return status;
}

bool isOwnedBy(std::string_view status, uid_t user)
{
    uid_t real = 0;
    return toNumber(firstWordOf(status, "\nUid:"), real) && real == user;
}

bool isEnding(std::string_view status)
{
    constexpr int HEXADECIMAL = 16;
    const std::string_view state = firstWordOf(status, "\nState:");
    const std::string_view pending = firstWordOf(status, "\nSigPnd:");
    std::uint64_t signals = 0;
    std::from_chars(pending.data(), pending.data() + pending.size(), signals, HEXADECIMAL);
    return state == "Z" || state == "X" || (signals >> (SIGKILL - 1) & 1U) != 0;
}

std::vector<std::string> splitAtNul(std::string_view text)
{
    std::vector<std::string> parts;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\0', begin), text.size());
        parts.emplace_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return parts;
}

ProcessEnvironment parseEnvironment(std::string_view text, pid_t pid)
{
    constexpr std::string_view ENTRY = "GIO_LAUNCHED_DESKTOP_FILE=";
    constexpr std::string_view PROCESS = "GIO_LAUNCHED_DESKTOP_FILE_PID=";
    constexpr std::string_view DISPLAY = "DISPLAY=";
    constexpr std::string_view WAYLAND_DISPLAY = "WAYLAND_DISPLAY=";
    ProcessEnvironment result;
    bool forThisProcess = false;
    while (!text.empty()) {
        const std::string_view entry = text.substr(0, text.find('\0'));
        text.remove_prefix(std::min(entry.size() + 1, text.size()));
        if (entry.starts_with(ENTRY)) {
            result.launchedEntry = entry.substr(ENTRY.size());
        } else if (entry.starts_with(PROCESS)) {
            // Children inherit the variable; only the process that it was written for counts.
            pid_t writtenFor = 0;
            forThisProcess =
                toNumber(entry.substr(PROCESS.size()), writtenFor) && writtenFor == pid;
        } else if (entry.starts_with(DISPLAY)) {
            result.display = entry.substr(DISPLAY.size());
        } else if (entry.starts_with(WAYLAND_DISPLAY)) {
            result.waylandDisplay = entry.substr(WAYLAND_DISPLAY.size());
        }
    }
    if (!forThisProcess) {
        result.launchedEntry.reset();
    }
    return result;
}

std::optional<std::string> applicationOfCgroup(std::string_view text)
{
    // The innermost unit counts; of several hierarchies any that names an application.
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        if (std::optional<std::string> application = applicationOfGroup(line)) {
            return application;
        }
    }
    return std::nullopt;
}

} // namespace proc
