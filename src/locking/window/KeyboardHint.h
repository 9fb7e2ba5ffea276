// The small type below the password field: Caps Lock and the layout of the keyboard, which is a
// button where there is another one to switch to.
#pragma once

#include "platform/KeyboardStatus.h"

namespace Ui { // NOLINT(readability-identifier-naming): the generator's name
class PasswordWindow;
}

namespace locking {

/// Shows the keyboard as it is now, and tells assistive tools of Caps Lock with the field.
void showKeyboardHint(const Ui::PasswordWindow& ui, platform::KeyboardStatus& keyboard);

} // namespace locking
