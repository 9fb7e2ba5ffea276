// Stands for the agent: takes its name in the session, writes down how it was started, and ends as
// a test wants it to. The file "manner" in the runtime folder may say "dies", for one that is
// killed as soon as it has started.
//   SIGUSR1: exit(0)   SIGINT: exit(3)   SIGUSR2: the termination notice, then exit(1)
#include "Notice.h"
#include "desktop/TemporaryFolder.h"
#include "linux/process/Environment.h"
#include "linux/session/Programs.h"
#include "linux/session/SessionInstance.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

namespace {

// One line in one write: agents may start at the same time.
void writeDown(const std::string& argument)
{
    const std::string fromMaster = process::environmentValue("StartFromMaster");
    std::ostringstream line;
    line << ::getpid() << ' ' << (argument.empty() ? "none" : argument) << ' '
         << (fromMaster.empty() ? "unset" : fromMaster) << '\n';
    std::ofstream(process::environmentValue("XDG_RUNTIME_DIR") + "/agents.log", std::ios::app)
        << line.str() << std::flush;
}

[[noreturn]] void leave(int status)
{
    std::exit(status); // NOLINT(concurrency-mt-unsafe): the one thread of this program
}

void obey(unsigned signal)
{
    if (signal == SIGUSR1) {
        leave(0);
    } else if (signal == SIGINT) {
        leave(3);
    } else if (signal == SIGUSR2) {
        postNotice(
            process::environmentValue("DBUS_SESSION_BUS_ADDRESS"),
            "TERMINATE_HELPER_TARVEL",
            "com.quorvent.Tarvel"
        );
        leave(1);
    }
}

int blockSignals()
{
    sigset_t set = {};
    sigemptyset(&set);
    for (const int signal : {SIGUSR1, SIGUSR2, SIGINT}) {
        sigaddset(&set, signal);
    }
    ::pthread_sigmask(SIG_BLOCK, &set, nullptr);
    return ::signalfd(-1, &set, SFD_CLOEXEC);
}

} // namespace

int main(int count, char** arguments)
{
    const int signals = blockSignals();
    session::SessionInstance instance(session::AGENT);
    if (instance.acquire() == session::Acquired::AlreadyRunning) {
        return 0;
    }
    writeDown(count > 1 ? arguments[1] : "");
    if (desktop::readFile(process::environmentValue("XDG_RUNTIME_DIR") + "/manner") == "dies") {
        ::kill(::getpid(), SIGKILL);
    }
    std::array<pollfd, 2> wanted = {{{signals, POLLIN, 0}, {instance.fd(), POLLIN, 0}}};
    for (;;) {
        ::poll(wanted.data(), wanted.size(), -1);
        if (wanted[1].revents != 0) {
            instance.handle();
        }
        signalfd_siginfo received = {};
        if (wanted[0].revents != 0 && ::read(signals, &received, sizeof received) > 0) {
            obey(received.ssi_signo);
        }
    }
}
