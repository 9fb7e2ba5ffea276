#include "tour/EndingSignals.h"

#include <ctime>

namespace tour {

EndingSignals::EndingSignals()
{
    sigemptyset(&signals);
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        sigaddset(&signals, number);
    }
    pthread_sigmask(SIG_BLOCK, &signals, &before);
}

EndingSignals::~EndingSignals()
{
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

bool EndingSignals::comeWithin(std::chrono::seconds time) const
{
    const timespec patience{time.count(), 0};
    return sigtimedwait(&signals, nullptr, &patience) > 0;
}

} // namespace tour
