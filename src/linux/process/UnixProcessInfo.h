// This process as the kernel started it. Main thread.
#pragma once

#include "platform/ProcessInfo.h"

#include <functional>

namespace process {

class UnixProcessInfo final : public platform::ProcessInfo
{
public:
    /// Copies the arguments of `main` as they are; make it before a toolkit takes some away.
    UnixProcessInfo(int argumentCount, const char* const* arguments);

    std::vector<std::string> arguments() override;

    /// What must be done before the end, and cannot be done later: on the thread that ends the
    /// process.
    std::function<void(int status)> onExit;

    /// Ends by way of `_exit`: other threads are at work, and what they use is not taken from them.
    [[noreturn]] void exit(int status) override;

private:
    std::vector<std::string> argumentList;
};

} // namespace process
