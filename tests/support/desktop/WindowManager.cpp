#include "desktop/WindowManager.h"

#include "desktop/Failure.h"
#include "desktop/Wait.h"

namespace desktop {

WindowManager::WindowManager(XConnection& connection, const Environment& environment)
    : process({.arguments = {"openbox", "--sm-disable"}, .environment = environment})
{
    const bool manages = waitUntil(
        [&connection] {
            return !connection.property(connection.root(), "_NET_SUPPORTING_WM_CHECK").empty() &&
                   !connection.property(connection.root(), "_NET_NUMBER_OF_DESKTOPS").empty();
        },
        std::chrono::seconds(20)
    );
    if (!manages) {
        throw Failure("the window manager does not come up");
    }
}

} // namespace desktop
