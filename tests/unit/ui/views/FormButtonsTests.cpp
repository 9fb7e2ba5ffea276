#include "qt/Input.h"
#include "ui/views/FormButtons.h"

#include <QPushButton>

#include <gtest/gtest.h>

TEST(FormButtons, AReturnThatIsHeldPressesOnce)
{
    QWidget form;
    QPushButton button(&form);
    int presses = 0;
    QObject::connect(&button, &QPushButton::clicked, &form, [&presses] { ++presses; });
    ui::FormButtons::install(form);

    for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
        presses = 0;
        support::press(button, key);
        support::press(button, key, QString(), Qt::NoModifier, true);
        EXPECT_EQ(presses, 1) << key;
    }
}
