// Changes how many descriptors this process may have for the length of a test.
#pragma once

#include <sys/resource.h>

namespace processes {

inline rlimit descriptorLimit()
{
    rlimit limit{};
    ::getrlimit(RLIMIT_NOFILE, &limit);
    return limit;
}

class DescriptorLimit
{
public:
    explicit DescriptorLimit(rlim_t most) : before(descriptorLimit())
    {
        const rlimit limit{most, before.rlim_max};
        ::setrlimit(RLIMIT_NOFILE, &limit);
    }

    DescriptorLimit(const DescriptorLimit&) = delete;
    DescriptorLimit& operator=(const DescriptorLimit&) = delete;
    DescriptorLimit(DescriptorLimit&&) = delete;
    DescriptorLimit& operator=(DescriptorLimit&&) = delete;

    ~DescriptorLimit() { ::setrlimit(RLIMIT_NOFILE, &before); }

private:
    rlimit before;
};

} // namespace processes
