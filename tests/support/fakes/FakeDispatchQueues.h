// Queues whose blocks run only when told to, on the calling thread.
#pragma once

#include "platform/DispatchQueues.h"

#include <deque>
#include <utility>

namespace fakes {

class FakeDispatchQueues final : public platform::DispatchQueues
{
public:
    void asyncGlobal(platform::Block block) override { global.push_back(std::move(block)); }

    void asyncMain(platform::Block block) override { main.push_back(std::move(block)); }

    /// Runs what is queued on the main queue now; what that queues in turn waits for the next turn.
    void runMainTurn() { runTurn(main); }

    void runGlobalTurn() { runTurn(global); }

    /// Turns of both queues until nothing is left.
    void runAll()
    {
        while (!main.empty() || !global.empty()) {
            runGlobalTurn();
            runMainTurn();
        }
    }

    std::deque<platform::Block> main;
    std::deque<platform::Block> global;

private:
    static void runTurn(std::deque<platform::Block>& queue)
    {
        const std::deque<platform::Block> turn = std::exchange(queue, {});
        for (const platform::Block& block : turn) {
            block();
        }
    }
};

} // namespace fakes
