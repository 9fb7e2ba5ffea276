#include "locking/window/KeyboardHint.h"

#include "ui_PasswordWindow.h"

namespace locking {

void showKeyboardHint(const Ui::PasswordWindow& ui, platform::KeyboardStatus& keyboard)
{
    const bool capsLockOn = keyboard.capsLockOn();
    const QString layout = QString::fromStdString(keyboard.layoutName());
    ui.capsLockLabel->setVisible(capsLockOn);
    const QString text = layout.isEmpty() ? QString() : QStringLiteral("Keyboard: %1").arg(layout);
    const bool canSwitch = keyboard.hasSeveralLayouts() && !layout.isEmpty();
    ui.keyboardLayoutLabel->setText(text);
    ui.keyboardLayoutLabel->setVisible(!canSwitch);
    ui.keyboardLayoutButton->setText(text);
    ui.keyboardLayoutButton->setAccessibleName(
        QStringLiteral("Keyboard layout: %1. Switch to the next one").arg(layout)
    );
    ui.keyboardLayoutButton->setVisible(canSwitch);
    ui.passwordFieldOutlet->setAccessibleDescription(
        capsLockOn ? ui.capsLockLabel->text() : QString()
    );
}

} // namespace locking
