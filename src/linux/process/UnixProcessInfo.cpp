#include "linux/process/UnixProcessInfo.h"

#include <cstdlib>

namespace process {

UnixProcessInfo::UnixProcessInfo(int argumentCount, const char* const* arguments)
    : argumentList(arguments, arguments + argumentCount)
{
}

std::vector<std::string> UnixProcessInfo::arguments()
{
    return argumentList;
}

void UnixProcessInfo::exit(int status)
{
    std::exit(status); // NOLINT(concurrency-mt-unsafe): the one place where the agent ends
}

} // namespace process
