// At each SIGUSR1 it opens a terminal, whose shell stops just before it is executed, and writes
// that process's number into the file that is its argument. It shows nothing.
#include <csignal>
#include <fstream>

#include <pty.h>
#include <unistd.h>

namespace {

void openShell(const char* file)
{
    int terminal = -1;
    const pid_t child = ::forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) {
        ::raise(SIGSTOP);
        ::execl("/bin/sh", "sh", nullptr);
        ::_exit(127);
    }
    std::ofstream(file) << child << '\n';
}

} // namespace

int main(int /*count*/, char** arguments)
{
    sigset_t awaited = {};
    sigemptyset(&awaited);
    sigaddset(&awaited, SIGUSR1);
    ::pthread_sigmask(SIG_BLOCK, &awaited, nullptr);
    std::ofstream(arguments[1]) << "ready\n";
    for (int number = 0; ::sigwait(&awaited, &number) == 0;) {
        openShell(arguments[1]);
    }
}
