#include "desktop/ChildProcess.h"

#include "desktop/Failure.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace desktop {

namespace {

constexpr int UNUSABLE = -1;

/// Everything that the child needs between fork and exec, made before: after fork in a program with
/// threads only system calls are safe.
struct Prepared
{
    std::vector<char*> arguments;
    std::vector<std::string> environmentTexts;
    std::vector<char*> environment;
    int input = UNUSABLE;
    int output = UNUSABLE;
    int error = UNUSABLE;
    int report = UNUSABLE; // errno of a failed exec goes here
    const std::vector<int>* inherited = nullptr;
    pid_t parent = 0;
    bool endsWithParent = true;
};

int openForAppend(const std::filesystem::path& path)
{
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    if (file < 0) {
        throw Failure(
            "cannot open " + path.string() + ": " + std::generic_category().message(errno)
        );
    }
    return file;
}

int inputOf(const std::string& text)
{
    if (text.empty()) {
        return open("/dev/null", O_RDONLY | O_CLOEXEC);
    }
    const int file = memfd_create("input", MFD_CLOEXEC);
    if (file < 0 || write(file, text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
        throw Failure("no room for the input of a program");
    }
    lseek(file, 0, SEEK_SET);
    return file;
}

[[noreturn]] void becomeProgram(const Prepared& prepared)
{
    if (prepared.endsWithParent) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != prepared.parent) {
            _exit(127);
        }
    }
    sigset_t none;
    sigemptyset(&none);
    pthread_sigmask(SIG_SETMASK, &none, nullptr);

    struct sigaction usual
    {
    };

    usual.sa_handler = SIG_DFL;
    sigaction(SIGPIPE, &usual, nullptr);
    dup2(prepared.input, STDIN_FILENO);
    dup2(prepared.output, STDOUT_FILENO);
    dup2(prepared.error, STDERR_FILENO);
    for (const int descriptor : *prepared.inherited) {
        fcntl(descriptor, F_SETFD, 0);
    }
    execvpe(prepared.arguments[0], prepared.arguments.data(), prepared.environment.data());
    const int reason = errno;
    (void)!write(prepared.report, &reason, sizeof reason);
    _exit(127);
}

void closeAll(const Prepared& prepared)
{
    close(prepared.input);
    close(prepared.output);
    close(prepared.error);
    close(prepared.report);
}

Prepared prepare(const ChildProcess::Command& command, int report)
{
    Prepared prepared;
    for (const std::string& argument : command.arguments) {
        prepared.arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    prepared.arguments.push_back(nullptr);
    for (const auto& [name, value] : command.environment) {
        std::string& text = prepared.environmentTexts.emplace_back(name);
        text.append("=").append(value);
    }
    for (std::string& text : prepared.environmentTexts) {
        prepared.environment.push_back(text.data());
    }
    prepared.environment.push_back(nullptr);
    prepared.input = inputOf(command.input);
    prepared.output = openForAppend(command.output);
    prepared.error = openForAppend(command.error);
    prepared.report = report;
    prepared.inherited = &command.inheritedDescriptors;
    prepared.parent = getpid();
    prepared.endsWithParent = command.endsWithThisProcess;
    return prepared;
}

Environment ownEnvironment()
{
    Environment result;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        const std::string text = *entry;
        const std::size_t equals = text.find('=');
        if (equals != std::string::npos) {
            result.emplace(text.substr(0, equals), text.substr(equals + 1));
        }
    }
    return result;
}

} // namespace

ChildProcess::ChildProcess(std::vector<std::string> arguments)
    : ChildProcess(Command{.arguments = std::move(arguments), .environment = ownEnvironment()})
{
}

ChildProcess::ChildProcess(const Command& command)
{
    std::array<int, 2> report = {UNUSABLE, UNUSABLE};
    if (pipe2(report.data(), O_CLOEXEC) != 0) {
        throw Failure("no pipe");
    }
    const Prepared prepared = prepare(command, report[1]);
    process = fork();
    if (process == 0) {
        becomeProgram(prepared);
    }
    closeAll(prepared);
    int reason = 0;
    const bool failed = read(report[0], &reason, sizeof reason) == sizeof reason;
    close(report[0]);
    if (process < 0) {
        throw Failure("no process");
    }
    descriptor = static_cast<int>(syscall(SYS_pidfd_open, process, 0));
    if (failed) {
        stop();
        throw Failure(
            "cannot start " + command.arguments[0] + ": " + std::generic_category().message(reason)
        );
    }
}

ChildProcess::~ChildProcess()
{
    stop();
}

ChildProcess::ChildProcess(ChildProcess&& other) noexcept
    : process(std::exchange(other.process, -1)),
      descriptor(std::exchange(other.descriptor, -1)),
      ended(std::exchange(other.ended, std::nullopt))
{
}

ChildProcess& ChildProcess::operator=(ChildProcess&& other) noexcept
{
    if (this != &other) {
        stop();
        process = std::exchange(other.process, -1);
        descriptor = std::exchange(other.descriptor, -1);
        ended = std::exchange(other.ended, std::nullopt);
    }
    return *this;
}

bool ChildProcess::isRunning()
{
    return !waitForEnd(std::chrono::milliseconds(0)).has_value();
}

std::optional<int> ChildProcess::waitForEnd(std::chrono::milliseconds timeout)
{
    if (ended.has_value() || process < 0) {
        return ended;
    }
    pollfd end{descriptor, POLLIN, 0};
    int status = 0;
    if (poll(&end, 1, static_cast<int>(timeout.count())) > 0 &&
        waitpid(process, &status, 0) == process) {
        ended = status;
    }
    return ended;
}

std::optional<int> ChildProcess::waitForExitStatus(std::chrono::milliseconds timeout)
{
    const std::optional<int> status = waitForEnd(timeout);
    if (!status.has_value() || !WIFEXITED(*status)) {
        return std::nullopt;
    }
    return WEXITSTATUS(*status);
}

void ChildProcess::signal(int number)
{
    if (isRunning() && process > 0) {
        kill(process, number);
    }
}

void ChildProcess::end()
{
    signal(SIGKILL);
    waitForEnd(std::chrono::seconds(10));
}

void ChildProcess::stop()
{
    if (process > 0 && !ended.has_value()) {
        kill(process, SIGTERM);
        kill(process, SIGCONT); // one that is stopped hears of nothing else
        if (!waitForEnd(std::chrono::seconds(2)).has_value()) {
            end();
        }
    }
    if (descriptor >= 0) {
        close(descriptor);
        descriptor = -1;
    }
    process = -1;
}

} // namespace desktop
