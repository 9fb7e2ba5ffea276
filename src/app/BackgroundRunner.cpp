#include "app/BackgroundRunner.h"

#include "platform/Platform.h"

#include <utility>

namespace app {

void BackgroundRunner::run(platform::Block block)
{
    platform::current().dispatchQueues.asyncGlobal(std::move(block));
}

void BackgroundRunner::runOnMainThread(platform::Block block)
{
    platform::current().dispatchQueues.asyncMain(std::move(block));
}

} // namespace app
