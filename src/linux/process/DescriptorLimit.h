// How many files and processes this process may hold open. Watching an application takes a
// descriptor for each of its processes, and the usual limit is for programs that still use
// select(); those that are started from here are to find the usual one. Main thread.
#pragma once

#include <sys/resource.h>

namespace process {

/// As many as the system allows, from now on.
void raiseDescriptorLimit();

/// While it lives the limit is what it was before it was raised: what is started meanwhile inherits
/// that. Nothing where it was not raised.
class UsualDescriptorLimit
{
public:
    UsualDescriptorLimit();
    UsualDescriptorLimit(const UsualDescriptorLimit&) = delete;
    UsualDescriptorLimit& operator=(const UsualDescriptorLimit&) = delete;
    UsualDescriptorLimit(UsualDescriptorLimit&&) = delete;
    UsualDescriptorLimit& operator=(UsualDescriptorLimit&&) = delete;
    ~UsualDescriptorLimit();

private:
    rlimit raised{};
};

} // namespace process
