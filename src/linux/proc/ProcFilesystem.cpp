#include "linux/proc/ProcFilesystem.h"

#include "linux/descriptors/FileDescriptor.h"
#include "linux/proc/ToNumber.h"
#include "platform/Call.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <memory>
#include <string_view>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace proc {

namespace {

// Room for the longest command line that the kernel takes.
constexpr std::size_t LARGEST_FILE = std::size_t{4} * 1024 * 1024;
constexpr std::size_t DEEPEST_TREE = 256;

std::optional<std::string> readAt(int folder, const char* name)
{
    const descriptors::FileDescriptor file(::openat(folder, name, O_RDONLY | O_CLOEXEC));
    if (!file.isOpen()) {
        return std::nullopt;
    }
    std::string text;
    std::array<char, 4096> chunk; // NOLINT(cppcoreguidelines-pro-type-member-init): read fills it
    while (text.size() < LARGEST_FILE) {
        const ssize_t size = ::read(file.get(), chunk.data(), chunk.size());
        if (size < 0 && errno == EINTR) {
            continue;
        }
        if (size <= 0) {
            break;
        }
        text.append(chunk.data(), static_cast<std::size_t>(size));
    }
    return text;
}

/// Where a link leads. Empty for one that must not be read; nothing for one that leads nowhere.
std::optional<std::string> linkAt(int folder, const char* name)
{
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): readlink fills it
    std::array<char, PATH_MAX> target;
    const ssize_t size = ::readlinkat(folder, name, target.data(), target.size());
    if (size < 0 && (errno == EACCES || errno == EPERM)) {
        return std::string();
    }
    return size <= 0 ? std::nullopt
                     : std::optional(std::string(target.data(), static_cast<std::size_t>(size)));
}

/// The path that an executable had before its file was removed or replaced.
std::string withoutDeletedMark(std::string path)
{
    constexpr std::string_view MARK = " (deleted)";
    if (path.ends_with(MARK)) {
        path.resize(path.size() - MARK.size());
    }
    return path;
}

/// Entries of a folder that bear the number of a process or a thread.
std::vector<pid_t> numbersIn(const std::string& path)
{
    std::vector<pid_t> result;
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(::opendir(path.c_str()), ::closedir);
    if (folder == nullptr) {
        return result;
    }
    // One thread per stream of names, so this is safe; the reentrant form is deprecated.
    // NOLINTNEXTLINE(concurrency-mt-unsafe)
    while (const dirent* entry = ::readdir(folder.get())) {
        pid_t number = 0;
        if (toNumber(&entry->d_name[0], number)) {
            result.push_back(number);
        }
    }
    return result;
}

} // namespace

ProcFilesystem::ProcFilesystem(uid_t user, std::string root) : user(user), root(std::move(root)) {}

std::string ProcFilesystem::folderOf(pid_t pid) const
{
    return root + "/" + std::to_string(pid);
}

/// The folder of a process that keeps its memory to itself belongs to root, whoever runs it.
bool ProcFilesystem::isOfUser(pid_t pid, uid_t owner) const
{
    return owner == user ||
           (owner == 0 &&
            isOwnedBy(
                readAt(AT_FDCWD, (folderOf(pid) + "/status").c_str()).value_or(std::string()), user
            ));
}

std::optional<ProcessFacts> ProcFilesystem::facts(pid_t pid, const Interest& interest) const
{
    return read(pid, interest, false);
}

std::optional<ProcessFacts> ProcFilesystem::settledFacts(pid_t pid) const
{
    return read(pid, {}, true);
}

std::optional<ProcessFacts>
ProcFilesystem::read(pid_t pid, const Interest& interest, bool settled) const
{
    // Everything is read below one open folder, which stays that process's even if its number is
    // given to another one meanwhile.
    const descriptors::FileDescriptor folder(
        ::open(folderOf(pid).c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)
    );
    if (!folder.isOpen()) {
        noteExhaustion();
    }

    struct stat owner
    {
    };

    if (!folder.isOpen() || ::fstat(folder.get(), &owner) != 0 || !isOfUser(pid, owner.st_uid)) {
        return std::nullopt;
    }
    std::optional<std::string> executable = linkAt(folder.get(), "exe");
    if (executable) {
        executable = withoutDeletedMark(std::move(*executable));
    }
    if (!executable || (interest && !interest(pid, *executable))) {
        return std::nullopt;
    }
    std::vector<std::string> arguments = splitAtNul(readAt(folder.get(), "cmdline").value_or(""));
    // Last: an exec gives a process its file first and its arguments when it is a fork no longer.
    const std::optional<std::string> stat = readAt(folder.get(), "stat");
    if (!stat) {
        noteExhaustion();
    }
    const auto status = parseStatus(stat.value_or(std::string()));
    if (!status || (arguments.empty() && !settled && linkAt(folder.get(), "exe"))) {
        return std::nullopt;
    }
    return ProcessFacts{
        .pid = pid,
        .parent = status->parent,
        .terminal = status->terminal,
        .isFork = status->isFork,
        .startTime = status->startTime,
        .executable = std::move(*executable),
        .arguments = std::move(arguments),
        .workingDirectory = linkAt(folder.get(), "cwd").value_or(""),
    };
}

/// Right after something could not be opened.
void ProcFilesystem::noteExhaustion() const
{
    if (errno == EMFILE || errno == ENFILE) {
        platform::call(onExhausted);
    }
}

std::optional<ProcessStatus> ProcFilesystem::status(pid_t pid) const
{
    const std::optional<std::string> text = readAt(AT_FDCWD, (folderOf(pid) + "/stat").c_str());
    return text ? parseStatus(*text) : std::nullopt;
}

std::optional<std::string> ProcFilesystem::executable(pid_t pid) const
{
    std::optional<std::string> path = linkAt(AT_FDCWD, (folderOf(pid) + "/exe").c_str());
    return path ? std::optional(withoutDeletedMark(std::move(*path))) : std::nullopt;
}

std::vector<std::string> ProcFilesystem::arguments(pid_t pid) const
{
    return splitAtNul(readAt(AT_FDCWD, (folderOf(pid) + "/cmdline").c_str()).value_or(""));
}

std::vector<pid_t> ProcFilesystem::processes(Closed closed) const
{
    std::vector<pid_t> result = numbersIn(root);
    std::erase_if(result, [&](pid_t pid) {
        struct stat owner
        {
        };

        return ::stat(folderOf(pid).c_str(), &owner) != 0 ||
               (owner.st_uid != user && (closed == Closed::LeftOut || !isOfUser(pid, owner.st_uid))
               );
    });
    return result;
}

std::vector<ProcessFacts> ProcFilesystem::allFacts() const
{
    std::vector<ProcessFacts> result;
    for (const pid_t pid : processes(Closed::Included)) {
        if (std::optional<ProcessFacts> known = settledFacts(pid)) {
            result.push_back(std::move(*known));
        }
    }
    std::sort(result.begin(), result.end(), [](const auto& left, const auto& right) {
        return std::pair(left.startTime, left.pid) < std::pair(right.startTime, right.pid);
    });
    return result;
}

std::vector<pid_t> ProcFilesystem::ancestors(pid_t pid) const
{
    std::vector<pid_t> result;
    std::optional<ProcessStatus> known = status(pid);
    while (known && known->parent > 1 && result.size() < DEEPEST_TREE) {
        result.push_back(known->parent);
        known = status(known->parent);
    }
    return result;
}

ProcessEnvironment ProcFilesystem::environment(pid_t pid) const
{
    const auto text = readAt(AT_FDCWD, (folderOf(pid) + "/environ").c_str());
    return parseEnvironment(text.value_or(""), pid);
}

std::optional<std::string> ProcFilesystem::cgroupApplication(pid_t pid) const
{
    const auto text = readAt(AT_FDCWD, (folderOf(pid) + "/cgroup").c_str());
    return applicationOfCgroup(text.value_or(""));
}

bool ProcFilesystem::alive(pid_t pid, std::uint64_t startTime) const
{
    const std::optional<ProcessStatus> known = status(pid);
    if (!known || known->startTime != startTime || known->state == 'X') {
        return false;
    }
    // The first thread may end before the others.
    return known->state != 'Z' || hasLivingThread(pid);
}

bool ProcFilesystem::hasLivingThread(pid_t pid) const
{
    const std::string threads = folderOf(pid) + "/task";
    const std::vector<pid_t> all = numbersIn(threads);
    return std::any_of(all.begin(), all.end(), [&](pid_t thread) {
        const std::string path = threads + "/" + std::to_string(thread) + "/status";
        const std::optional<std::string> status = readAt(AT_FDCWD, path.c_str());
        return status && !status->empty() && !isEnding(*status);
    });
}

} // namespace proc
