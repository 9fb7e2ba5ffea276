// Finds an icon by what a desktop entry says about it. A name or file that gives none reads as the
// icon of programs in general; where the desktop lacks even that, the icon is null.
#pragma once

#include "platform/Icon.h"

#include <string>

namespace qt {

class QtIconLoader
{
public:
    /// Main thread only, once there is an application object. A desktop without an icon theme gets
    /// one that is installed.
    QtIconLoader();

    /// The icon for a name of the icon theme or an absolute path. Never empty. Any thread.
    platform::IconHandle load(const std::string& nameOrPath) const;
};

} // namespace qt
