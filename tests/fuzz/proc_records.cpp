// The records of /proc: command lines, environments, control groups, states.
#include "fuzz/Fuzz.h"
#include "linux/proc/ProcRecords.h"

void fuzz(std::string_view bytes)
{
    const auto application = proc::applicationOfCgroup(bytes);
    require(!application || !application->empty());
    std::size_t length = 0;
    for (const std::string& part : proc::splitAtNul(bytes)) {
        length += part.size() + 1;
    }
    require(length >= bytes.size() && length <= bytes.size() + 1);
    static_cast<void>(proc::parseStatus(bytes));
    static_cast<void>(proc::parseEnvironment(bytes, 42));
    static_cast<void>(proc::isOwnedBy(bytes, 1000));
    static_cast<void>(proc::isEnding(bytes));
}
