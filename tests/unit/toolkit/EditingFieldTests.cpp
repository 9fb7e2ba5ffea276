// What a masked field makes of dead keys, with no input method to help it.
#include "toolkit/EditingField.h"

#include <QApplication>
#include <QFocusEvent>
#include <QInputMethod>
#include <QInputMethodQueryEvent>
#include <QKeyEvent>

#include <functional>
#include <vector>

#include <gtest/gtest.h>

using toolkit::TextMovement;

namespace {

constexpr quint32 DEAD_ACUTE = 0xfe51;
constexpr quint32 SHIFT = 0xffe1;

class EditingField : public testing::Test
{
protected:
    EditingField()
    {
        field.setEchoMode(QLineEdit::Password);
        field.onEndEditing = [this](TextMovement movement) { movements.push_back(movement); };
    }

    void press(
        int key,
        quint32 symbol,
        const QString& text = QString(),
        Qt::KeyboardModifiers modifiers = Qt::NoModifier
    )
    {
        QKeyEvent down(QEvent::KeyPress, key, modifiers, 0, symbol, 0, text);
        QKeyEvent up(QEvent::KeyRelease, key, modifiers, 0, symbol, 0, text);
        QApplication::sendEvent(&field, &down);
        QApplication::sendEvent(&field, &up);
    }

    void pressDeadAcute() { press(Qt::Key_Dead_Acute, DEAD_ACUTE); }

    void pressE() { press(Qt::Key_E, 'e', "e"); }

    toolkit::EditingField field;
    std::vector<TextMovement> movements;
};

} // namespace

TEST_F(EditingField, MaskedComposesDeadKeysItself)
{
    int edits = 0;
    QObject::connect(&field, &QLineEdit::textEdited, [&edits] { ++edits; });
    pressDeadAcute();
    EXPECT_EQ(field.text(), "");
    pressE();
    EXPECT_EQ(field.text(), QString::fromUtf8("é"));
    EXPECT_EQ(edits, 1);
    pressE();
    EXPECT_EQ(field.text(), QString::fromUtf8("ée"));
}

TEST_F(EditingField, WhatIsComposedReplacesWhatIsSelected)
{
    field.setText("wrong");
    field.selectAll();
    pressDeadAcute();
    pressE();
    EXPECT_EQ(field.text(), QString::fromUtf8("é"));
}

TEST_F(EditingField, MaskedTakesNoInputMethod)
{
    QInputMethodQueryEvent asked(Qt::ImEnabled);
    QApplication::sendEvent(&field, &asked);
    EXPECT_FALSE(asked.value(Qt::ImEnabled).toBool());

    field.setEchoMode(QLineEdit::Normal);
    QInputMethodQueryEvent askedAgain(Qt::ImEnabled);
    QApplication::sendEvent(&field, &askedAgain);
    EXPECT_TRUE(askedAgain.value(Qt::ImEnabled).toBool());
}

TEST_F(EditingField, UnmaskedLeavesDeadKeysToTheInputMethod)
{
    field.setEchoMode(QLineEdit::Normal);
    pressDeadAcute();
    pressE();
    EXPECT_EQ(field.text(), "e");
}

TEST_F(EditingField, AModifierBetweenADeadKeyAndItsLetterChangesNothing)
{
    pressDeadAcute();
    press(Qt::Key_Shift, SHIFT, QString(), Qt::ShiftModifier);
    press(Qt::Key_E, 'E', "E", Qt::ShiftModifier);
    EXPECT_EQ(field.text(), QString::fromUtf8("É"));
}

TEST_F(EditingField, TheKeyThatBreaksASequenceIsTyped)
{
    pressDeadAcute();
    press(Qt::Key_X, 'x', "x");
    pressE();
    EXPECT_EQ(field.text(), "xe");
}

TEST_F(EditingField, CommandsForgetADeadKeyAndAreDone)
{
    field.setText("ab");
    pressDeadAcute();
    press(Qt::Key_Backspace, 0xff08, "\b");
    pressE();
    EXPECT_EQ(field.text(), "ae");

    pressDeadAcute();
    press(Qt::Key_Return, 0xff0d, "\r");
    EXPECT_EQ(movements, std::vector{TextMovement::Return});
    pressE();
    EXPECT_EQ(field.text(), "aee");

    pressDeadAcute();
    press(Qt::Key_Escape, 0xff1b, "\x1b");
    pressE();
    EXPECT_EQ(field.text(), "aeee");

    pressDeadAcute();
    press(Qt::Key_A, 'a', "\x01", Qt::ControlModifier);
    pressE();
    EXPECT_EQ(field.text(), "e"); // all was selected
}

TEST_F(EditingField, AnotherTextOrFocusForgetsADeadKey)
{
    const std::vector<std::function<void()>> changes = {
        [this] { field.clear(); },
        [this] { field.setText("other"); },
        [this] {
            QFocusEvent out(QEvent::FocusOut);
            QApplication::sendEvent(&field, &out);
        },
        [this] {
            QFocusEvent in(QEvent::FocusIn);
            QApplication::sendEvent(&field, &in);
        },
    };
    for (const std::function<void()>& change : changes) {
        field.clear();
        pressDeadAcute();
        change();
        pressE();
        EXPECT_EQ(field.text().right(1), "e");
    }
}

TEST_F(EditingField, ARefusalIsSaidUntilTheUserTypesOn)
{
    field.sayWrong("Wrong password");
    EXPECT_EQ(field.accessibleDescription(), "Wrong password");
    field.setText("by somebody else");
    EXPECT_EQ(field.accessibleDescription(), "Wrong password");
    pressE();
    EXPECT_EQ(field.accessibleDescription(), "");
    field.sayWrong("Wrong password");
    EXPECT_EQ(field.accessibleDescription(), "Wrong password");
}

TEST_F(EditingField, AfterARefusalItIsDescribedAsBefore)
{
    field.setAccessibleDescription("Caps Lock is on");
    field.sayWrong("Wrong password");
    field.sayWrong("Wrong password again");
    pressE();
    EXPECT_EQ(field.accessibleDescription(), "Caps Lock is on");
}

TEST_F(EditingField, WhatIsSaidAfterARefusalStays)
{
    field.sayWrong("Wrong password");
    field.setAccessibleDescription("Caps Lock is on");
    pressE();
    EXPECT_EQ(field.accessibleDescription(), "Caps Lock is on");
}
