#include "locking/CoveringWindow.h"

namespace locking {

platform::WindowAttributes coveringWindowAttributes(const platform::Rect& screenFrame)
{
    return {
        .releasedWhenClosed = false,
        .backgroundColor = LOCK_COLOR,
        .opaque = false,
        .level = platform::WindowLevelKey::ScreenSaver,
        .collectionBehavior = platform::COLLECTION_BEHAVIOR_CAN_JOIN_ALL_SPACES,
        .styleMask = platform::STYLE_MASK_BORDERLESS,
        .frame = screenFrame,
    };
}

} // namespace locking
