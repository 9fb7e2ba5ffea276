#include "locking/CoveringWindow.h"

#include "platform/Fatal.h"
#include "platform/Platform.h"
#include "platform/Screens.h"

#include <optional>

namespace locking {

platform::WindowAttributes coveringWindowAttributes(const platform::Rect& screenFrame)
{
    return {
        .releasedWhenClosed = false,
        .backgroundColor = platform::LOCK_COLOR,
        .opaque = false,
        .level = platform::WindowLevelKey::ScreenSaver,
        .collectionBehavior = platform::COLLECTION_BEHAVIOR_CAN_JOIN_ALL_SPACES,
        .styleMask = platform::STYLE_MASK_BORDERLESS,
        .frame = screenFrame,
    };
}

std::vector<std::unique_ptr<platform::PlainWindow>> createCoveringWindows()
{
    const platform::Platform& platform = platform::current();
    const std::optional<std::vector<platform::Screen>> screens = platform.screens.screens();
    const std::optional<platform::Screen> mainScreen = platform.screens.mainScreen();
    if (!screens.has_value() || !mainScreen.has_value()) {
        platform::fatal("the screens to cover are not known");
    }
    std::vector<std::unique_ptr<platform::PlainWindow>> windows;
    for (const platform::Screen& screen : *screens) {
        if (screen.identifier != mainScreen->identifier) {
            windows.push_back(platform.windows.createWindow(coveringWindowAttributes(screen.frame))
            );
        }
    }
    return windows;
}

} // namespace locking
