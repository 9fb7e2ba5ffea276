// Tells this program from the others in what the workspace reports.
#pragma once

#include "platform/Workspace.h"

namespace locking {

/// True when the notification is about this agent; false also when it names no application.
bool concernsThisAgent(const platform::WorkspaceNotification& notification);

} // namespace locking
