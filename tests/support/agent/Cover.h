// Looks at the screens for the cover of a lock. One thread at a time.
#pragma once

#include "desktop/Desktop.h"
#include "desktop/Pixels.h"

#include <chrono>
#include <string>

namespace agent {

/// The part of the main screen in which the lock window may show something.
desktop::Rectangle controlsOf(const desktop::Rectangle& mainScreen);

/// Every screen shows the lock's colour and nothing else, but for the controls on the main screen.
bool isCovered(desktop::Desktop& desk);

/// No pixel of any screen has the lock's colour.
bool isUncovered(desktop::Desktop& desk);

/// The main screen shows something in the place of the controls.
bool showsControls(desktop::Desktop& desk);

/// For a person: what is seen on each screen instead of the cover.
std::string describe(desktop::Desktop& desk);

} // namespace agent
