#include "platform/Platform.h"

#include "platform/Fatal.h"

#include <atomic>

namespace platform {

namespace {

std::atomic<const Platform*> installed{nullptr};

} // namespace

void install(const Platform* platform)
{
    installed.store(platform);
}

const Platform& current()
{
    const Platform* platform = installed.load();
    if (platform == nullptr) {
        fatal("no platform is installed");
    }
    return *platform;
}

} // namespace platform
