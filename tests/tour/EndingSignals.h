// The signals that ask a program to end (SIGINT, SIGTERM, SIGHUP), kept back from their default
// action while the object lives. For the thread that makes it, and those that it starts.
#pragma once

#include <chrono>
#include <csignal>

namespace tour {

class EndingSignals
{
public:
    EndingSignals();
    ~EndingSignals();
    EndingSignals(const EndingSignals&) = delete;
    EndingSignals& operator=(const EndingSignals&) = delete;
    EndingSignals(EndingSignals&&) = delete;
    EndingSignals& operator=(EndingSignals&&) = delete;

    /// Whether one has come, or comes within the time.
    [[nodiscard]] bool comeWithin(std::chrono::seconds time) const;

private:
    sigset_t signals{};
    sigset_t before{};
};

} // namespace tour
