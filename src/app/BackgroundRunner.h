// The way off the main thread and back to it. Both calls return at once.
#pragma once

#include "platform/DispatchQueues.h"

namespace app {

class BackgroundRunner
{
public:
    /// Runs `block` on the global concurrent queue.
    static void run(platform::Block block);

    /// Runs `block` on the main queue, after the current turn.
    static void runOnMainThread(platform::Block block);
};

} // namespace app
