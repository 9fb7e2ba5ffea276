// The two queues of the process. Any thread may call; both calls return at once.
#pragma once

#include "platform/Port.h"

#include <functional>

namespace platform {

using Block = std::function<void()>;

class DispatchQueues : public Port
{
public:
    /// Runs `block` some time later on a worker thread, concurrently with others.
    virtual void asyncGlobal(Block block) = 0;

    /// Runs `block` on the main thread after the current turn, in order of submission.
    virtual void asyncMain(Block block) = 0;
};

} // namespace platform
