#include "linux/process/DescriptorLimit.h"

#include <optional>

namespace process {

namespace {

std::optional<rlim_t>& usualLimit()
{
    static std::optional<rlim_t> limit;
    return limit;
}

} // namespace

void raiseDescriptorLimit()
{
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0 || limit.rlim_cur == limit.rlim_max) {
        return;
    }
    const rlim_t usual = limit.rlim_cur;
    limit.rlim_cur = limit.rlim_max;
    if (::setrlimit(RLIMIT_NOFILE, &limit) == 0) {
        usualLimit() = usual;
    }
}

UsualDescriptorLimit::UsualDescriptorLimit()
{
    if (usualLimit().has_value() && ::getrlimit(RLIMIT_NOFILE, &raised) == 0) {
        const rlimit usual{*usualLimit(), raised.rlim_max};
        ::setrlimit(RLIMIT_NOFILE, &usual);
    }
}

UsualDescriptorLimit::~UsualDescriptorLimit()
{
    if (raised.rlim_max != 0) {
        ::setrlimit(RLIMIT_NOFILE, &raised);
    }
}

} // namespace process
