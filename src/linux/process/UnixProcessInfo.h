// This process as the kernel started it.
#pragma once

#include "platform/ProcessInfo.h"

namespace process {

class UnixProcessInfo final : public platform::ProcessInfo
{
public:
    /// Copies the arguments of `main` as they are; make it before a toolkit takes some away.
    UnixProcessInfo(int argumentCount, const char* const* arguments);

    std::vector<std::string> arguments() override;

    /// Ends by way of `std::exit`, so that what was registered to report the status is run.
    [[noreturn]] void exit(int status) override;

private:
    std::vector<std::string> argumentList;
};

} // namespace process
