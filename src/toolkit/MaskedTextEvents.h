// Has assistive tools told of marks where the text of a masked field changes. The toolkit masks
// what they ask a field for, and tells them by itself each character that is typed, and the whole
// text that is cleared. Everything else is told as it is, in the same order. One for the process,
// while the application object is there; main thread.
#pragma once

#include <QAccessible>

namespace toolkit {

class MaskedTextEvents
{
public:
    MaskedTextEvents();
    Q_DISABLE_COPY_MOVE(MaskedTextEvents)
    ~MaskedTextEvents();

private:
    static void tell(QAccessibleEvent* event);
    static void
    passMasked(QAccessibleTextCursorEvent&& masked, const QAccessibleTextCursorEvent& plain);
    static void pass(QAccessibleEvent* event);

    static QAccessible::UpdateHandler next; // who was told before; null for the platform
};

} // namespace toolkit
