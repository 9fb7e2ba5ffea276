// Arguments that are set beforehand, and an end of the process that is an exception instead, so
// that the test goes on. One thread.
#pragma once

#include "fakes/Calls.h"
#include "platform/ProcessInfo.h"

namespace fakes {

/// Thrown in place of the end of the process.
struct ProcessEnded
{
    int status = 0;
};

class FakeProcessInfo final : public platform::ProcessInfo
{
public:
    explicit FakeProcessInfo(Calls& calls) : calls(calls) {}

    std::vector<std::string> arguments() override { return argumentList; }

    [[noreturn]] void exit(int status) override
    {
        calls.push_back("processInfo exit " + std::to_string(status));
        throw ProcessEnded{status};
    }

    std::vector<std::string> argumentList{"/opt/Tarvel.app/Tarvel"};

private:
    Calls& calls;
};

} // namespace fakes
