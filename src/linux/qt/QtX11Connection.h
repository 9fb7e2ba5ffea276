// The toolkit's own connection to an X display. Main thread.
#pragma once

namespace qt {

/// Returns when the display has done everything that the toolkit asked for so far. Nothing on other
/// displays.
void syncWithX11();

} // namespace qt
