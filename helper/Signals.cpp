#include "helper/Signals.h"

#include "platform/Call.h"

#include <csignal>

#include <sys/signalfd.h>

namespace helper {

Signals::Signals()
{
    sigset_t set = {};
    sigemptyset(&set);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP, SIGCHLD}) {
        sigaddset(&set, signal);
    }
    ::pthread_sigmask(SIG_BLOCK, &set, nullptr);
    pending = descriptors::FileDescriptor(::signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK));
    struct sigaction ignoring = {};
    ignoring.sa_handler = SIG_IGN;
    ::sigaction(SIGPIPE, &ignoring, nullptr);
}

void Signals::wake()
{
    bool askedToEnd = false;
    signalfd_siginfo received = {};
    while (::read(pending.get(), &received, sizeof received) > 0) {
        askedToEnd = askedToEnd || received.ssi_signo != SIGCHLD;
    }
    platform::call(askedToEnd ? onAskedToEnd : onChildEnded);
}

} // namespace helper
