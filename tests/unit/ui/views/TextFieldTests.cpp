#include "qt/HeardPassword.h"
#include "qt/Input.h"
#include "qt/WaitFor.h"
#include "ui/views/TextField.h"

#include <QClipboard>
#include <QInputMethod>
#include <QTest>
#include <QVBoxLayout>

#include <vector>

#include <gtest/gtest.h>

using toolkit::TextMovement;

namespace {

/// Two fields in a window, of which the first has the keys.
class TextFieldMovements : public testing::Test
{
protected:
    TextFieldMovements()
    {
        auto* const layout = new QVBoxLayout(&window);
        layout->addWidget(field);
        layout->addWidget(other);
        field->onEndEditing = [this](TextMovement movement) { movements.push_back(movement); };
    }

    void SetUp() override
    {
        window.show();
        window.activateWindow();
        field->setFocus();
        ASSERT_TRUE(support::waitFor([this] { return field->hasFocus(); }));
    }

    using Movements = std::vector<TextMovement>;

    QWidget window;
    ui::TextField* const field = new ui::TextField(&window);
    ui::TextField* const other = new ui::TextField(&window);
    Movements movements;
};

class MaskedTextField : public testing::Test
{
protected:
    MaskedTextField()
    {
        field.setEchoMode(QLineEdit::Password);
        field.setAccessibleName("Password");
        field.setStringValue("secret");
        field.show();
        field.activateWindow();
        field.setFocus();
    }

    ui::TextField field;
};

} // namespace

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

TEST(TextField, KeepsItsTextWhole)
{
    ui::TextField field;
    for (const std::string text : {"", "secret", "Zo\xc3\xab \xf0\x9f\x94\x92", "  spaces  "}) {
        field.setStringValue(text);
        EXPECT_EQ(field.stringValue(), text);
    }
}

TEST_F(TextFieldMovements, AReturnThatIsHeldEndsTheEditingOnce)
{
    for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
        movements.clear();
        support::press(*field, key);
        support::press(*field, key, QString(), Qt::NoModifier, true);
        support::press(*field, key, QString(), Qt::NoModifier, true);
        EXPECT_EQ(movements, Movements{TextMovement::Return}) << key;
    }
}

TEST_F(TextFieldMovements, ReturnAndEnterAreTheReturnMovement)
{
    QTest::keyClick(field, Qt::Key_Return);
    QTest::keyClick(field, Qt::Key_Enter);
    EXPECT_EQ(movements, (Movements{TextMovement::Return, TextMovement::Return}));
    EXPECT_TRUE(field->hasFocus());
}

TEST_F(TextFieldMovements, TabAndBacktabAreTheirOwn)
{
    QTest::keyClick(field, Qt::Key_Tab);
    EXPECT_EQ(movements, Movements{TextMovement::Tab});
    EXPECT_TRUE(other->hasFocus());

    field->setFocus();
    movements.clear();
    QTest::keyClick(field, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(movements, Movements{TextMovement::Backtab});
}

TEST_F(TextFieldMovements, AClickElsewhereIsAnother)
{
    QTest::mouseClick(other, Qt::LeftButton);
    other->setFocus(Qt::MouseFocusReason);
    EXPECT_EQ(movements, Movements{TextMovement::Other});
}

TEST_F(TextFieldMovements, AKeyThatLeadsElsewhereIsAnother)
{
    other->setFocus(Qt::ShortcutFocusReason);
    EXPECT_EQ(movements, Movements{TextMovement::Other});
}

TEST_F(TextFieldMovements, AnotherWindowThatComesToTheFrontEndsNothing)
{
    QWidget second;
    second.show();
    second.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&second));
    EXPECT_EQ(movements, Movements());
}

TEST_F(TextFieldMovements, NobodyNeedListen)
{
    field->onEndEditing = nullptr;
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(movements, Movements());
}

TEST_F(MaskedTextField, TellsInputMethodsNothingOfTheText)
{
    ASSERT_TRUE(support::waitFor([this] { return field.hasFocus(); }));
    field.selectAll();
    for (const Qt::InputMethodQuery query :
         {Qt::ImSurroundingText,
          Qt::ImCurrentSelection,
          Qt::ImTextBeforeCursor,
          Qt::ImTextAfterCursor}) {
        QInputMethodQueryEvent asked(query);
        QCoreApplication::sendEvent(&field, &asked);
        const QVariant answer = QInputMethod::queryFocusObject(query, QVariant());
        EXPECT_EQ((asked.value(query).toString() + answer.toString()).toStdString(), "") << query;
    }
    for (const Qt::InputMethodQuery place :
         {Qt::ImCursorPosition, Qt::ImAnchorPosition, Qt::ImAbsolutePosition}) {
        EXPECT_EQ(field.inputMethodQuery(place), QVariant(0)) << place; // nor of its length
    }
    const auto hints = Qt::InputMethodHints(field.inputMethodQuery(Qt::ImHints).toInt());
    EXPECT_TRUE(hints.testFlag(Qt::ImhHiddenText));
    EXPECT_TRUE(hints.testFlag(Qt::ImhSensitiveData));
    EXPECT_TRUE(hints.testFlag(Qt::ImhNoPredictiveText));
}

TEST_F(MaskedTextField, APlainOneHelpsInputMethods)
{
    field.setEchoMode(QLineEdit::Normal);
    EXPECT_EQ(field.inputMethodQuery(Qt::ImSurroundingText).toString(), "secret");
}

TEST_F(MaskedTextField, NeitherCopyNorCutReachTheClipboard)
{
    QClipboard& clipboard = *QGuiApplication::clipboard();
    clipboard.setText("before");
    field.selectAll();
    QTest::keySequence(&field, QKeySequence::Copy);
    QTest::keySequence(&field, QKeySequence::Cut);
    EXPECT_EQ(clipboard.text(), "before");
}

TEST_F(MaskedTextField, ADeletedTextIsNotBroughtBack)
{
    field.selectAll();
    field.del();
    field.undo();
    EXPECT_EQ(field.stringValue(), "");
}

TEST_F(MaskedTextField, AssistiveToolsHearThatItIsAPasswordAndNotWhichOne)
{
    support::expectHeardAsPassword(field, "s");
}

TEST_F(MaskedTextField, GivesNoDragOfItsText)
{
    EXPECT_FALSE(field.dragEnabled());
}
