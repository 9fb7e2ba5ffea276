// What somebody who uses the desktop by hand wants on it: a panel with programs to start, a list of
// windows and a status area, and a menu with the same programs on the ground. The panel ends with
// the object.
#pragma once

#include "desktop/ChildProcess.h"
#include "desktop/Desktop.h"

namespace tour {

class Workplace
{
public:
    /// Throws `desktop::Failure` when it cannot be laid out.
    explicit Workplace(desktop::Desktop& desktop);

private:
    desktop::ChildProcess panel;
};

} // namespace tour
