#include "qt/Input.h"
#include "ui/views/TextField.h"

#include <gtest/gtest.h>

TEST(TextField, SaysThatTheUserChangedTheText)
{
    ui::TextField field;
    int changes = 0;
    field.onChange = [&changes] { ++changes; };

    support::press(field, Qt::Key_A, "a");
    field.setStringValue("set by the program");

    EXPECT_EQ(changes, 1);
}

TEST(TextField, AKeyThatItsListenerUsesIsNotTyped)
{
    ui::TextField field;
    field.onKeyDown = [](const QKeyEvent& event) { return event.key() == Qt::Key_A; };

    support::press(field, Qt::Key_A, "a");
    support::press(field, Qt::Key_B, "b");

    EXPECT_EQ(field.stringValue(), "b");
}
