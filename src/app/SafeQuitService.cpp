#include "app/SafeQuitService.h"

#include "app/Constants.h"
#include "platform/DistributedNotifications.h"
#include "platform/Fatal.h"
#include "platform/Platform.h"
#include "platform/ProcessInfo.h"
#include "storage/KeyConstants.h"

namespace app {

void SafeQuitService::quitApplication()
{
    const platform::Platform& platform = platform::current();
    platform.distributedNotifications.post(
        storage::KeyConstants::TERMINATE_HELPER_KEY, Constants::BUNDLE_ID()
    );
    platform.processInfo.exit(0);
    platform::fatal("the end of the process returned");
}

} // namespace app
