// The signals by which a session asks its programs to end, and the one that tells of a child's end.
// One thread.
#pragma once

#include "helper/EventSource.h"
#include "linux/descriptors/FileDescriptor.h"

#include <functional>

namespace helper {

class Signals final : public EventSource
{
public:
    /// From now on they end nobody by themselves; nor does a write to a closed pipe.
    Signals();

    std::function<void()> onAskedToEnd;

    /// One or more did.
    std::function<void()> onChildEnded;

    pollfd awaited() const override { return {pending.get(), POLLIN, 0}; }

    void wake() override;

private:
    descriptors::FileDescriptor pending;
};

} // namespace helper
