// Finds an icon by what a desktop entry says about it. A name or file that gives none, or one too
// large to be an icon, reads as the icon of programs in general; where the desktop lacks even that,
// the icon is null. Painting a large one never waits for the file.
#pragma once

#include "platform/DispatchQueues.h"
#include "platform/Icon.h"

#include <string>

namespace qt {

class QtIconLoader
{
public:
    /// Main thread only, once there is an application object. A desktop without an icon theme gets
    /// one that is installed. From then on the toolkit decodes no picture larger than an icon's.
    /// The queues must outlive this and every icon.
    explicit QtIconLoader(platform::DispatchQueues& queues);

    /// The icon for a name of the icon theme or an absolute path. Never empty. Any thread.
    platform::IconHandle load(const std::string& nameOrPath) const;

private:
    platform::DispatchQueues& queues;
};

} // namespace qt
