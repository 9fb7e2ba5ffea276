#include "linux/process/UnixProcessInfo.h"

#include "platform/Call.h"

#include <cstdio>

#include <unistd.h>

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
    platform::call(onExit, status);
    static_cast<void>(std::fflush(nullptr));
    ::_exit(status);
}

} // namespace process
