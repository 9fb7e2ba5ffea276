#include "locking/window/KeyboardHint.h"

#include "ui_PasswordWindow.h"

namespace locking {

void showKeyboardHint(const Ui::PasswordWindow& ui, platform::KeyboardStatus& keyboard)
{
    const bool capsLockOn = keyboard.capsLockOn();
    const QString layout = QString::fromStdString(keyboard.layoutName());
    ui.capsLockLabel->setVisible(capsLockOn);
    ui.keyboardLayoutLabel->setText(
        layout.isEmpty() ? QString() : BorderlessKeyWindow::tr("Keyboard: %1").arg(layout)
    );
    ui.passwordFieldOutlet->setAccessibleDescription(
        capsLockOn ? ui.capsLockLabel->text() : QString()
    );
}

} // namespace locking
