#include "helper/RestartLimit.h"

namespace helper {

bool RestartLimit::allow(TimePoint now)
{
    while (!restarts.empty() && now - restarts.front() >= WINDOW) {
        restarts.pop_front();
    }
    if (restarts.size() >= MOST) {
        return false;
    }
    restarts.push_back(now);
    return true;
}

} // namespace helper
