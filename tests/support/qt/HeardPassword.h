// What assistive tools make of a masked field.
#pragma once

#include <QAccessible>
#include <QString>
#include <QWidget>

#include <gtest/gtest.h>

namespace support {

/// They hear that the field is called "Password" and holds one, and nothing of that part of it.
inline void expectHeardAsPassword(QWidget& field, const QString& part)
{
    QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(&field);
    ASSERT_NE(accessible, nullptr);
    EXPECT_TRUE(accessible->state().passwordEdit);
    EXPECT_EQ(accessible->text(QAccessible::Name), "Password");
    EXPECT_FALSE(accessible->text(QAccessible::Value).contains(part));
    QAccessibleTextInterface* const text = accessible->textInterface();
    ASSERT_NE(text, nullptr);
    EXPECT_FALSE(text->text(0, text->characterCount()).contains(part));
}

} // namespace support
