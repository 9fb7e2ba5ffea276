// Hears of every exec from the kernel's process connector. All of it, callbacks included, happens
// on the given thread. Whether this user, kernel and namespace allow it shows only in the kernel's
// answer: either `onAccepted` or `onRefused` is called once, and nothing else before it.
#pragma once

#include "linux/descriptors/FileDescriptor.h"
#include "linux/proc/ConnectorProtocol.h"
#include "linux/proc/PollThread.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>

#include <sys/types.h>

namespace proc {

/// Gives a bound socket, or -1 with the reason in errno.
int openConnectorSocket();

struct ProcessConnectorOptions
{
    std::function<int()> open = openConnectorSocket;
    /// Where the process lives in a namespace of its own, no answer ever comes.
    std::chrono::milliseconds patience{500};
    /// Bytes that the kernel may keep for us; it gives as much of it as it allows.
    int receiveBuffer = 4 * 1024 * 1024;
};

class ProcessConnector
{
public:
    ProcessConnector(PollThread& thread, ProcessConnectorOptions options);
    ProcessConnector(const ProcessConnector&) = delete;
    ProcessConnector& operator=(const ProcessConnector&) = delete;
    ProcessConnector(ProcessConnector&&) = delete;
    ProcessConnector& operator=(ProcessConnector&&) = delete;
    ~ProcessConnector() = default;

    std::function<void()> onAccepted;
    std::function<void(const std::string& reason)> onRefused;
    std::function<void(pid_t pid)> onExec;
    /// Events were lost: what runs now has to be looked at anew.
    std::function<void()> onLost;

    void start();

private:
    void ask();
    void receive();
    void handle(const ConnectorEvent& event);
    void answered(std::uint32_t error);
    void refuse(const std::string& reason);

    PollThread& thread;
    ProcessConnectorOptions options;
    descriptors::FileDescriptor socket;
    std::uint32_t token = 0;
    enum class State
    {
        Asking,
        Accepted,
        Refused,
    } state = State::Asking;
};

} // namespace proc
