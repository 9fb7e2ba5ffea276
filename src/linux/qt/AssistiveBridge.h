// The toolkit's bridge to assistive programs. It connects to the session bus when the event loop
// begins, and waits as long as the bus does. Main thread, before the loop.
#pragma once

class QCoreApplication;

namespace qt {

/// Has the bridge made now, and without a bus: for one that does not answer. Assistive programs do
/// not see this process then.
void leaveOutAssistiveBridge(QCoreApplication& application);

} // namespace qt
