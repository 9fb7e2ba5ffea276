// What the password field must not give away, and which keys do nothing.
#include "LockWindowTest.h"
#include "qt/HeardPassword.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QInputMethod>
#include <QInputMethodQueryEvent>
#include <QMouseEvent>
#include <QStyle>

namespace {

class SecureTextField : public LockWindowTest
{
protected:
    SecureTextField()
    {
        show();
        type("secret");
    }
};

} // namespace

TEST_F(SecureTextField, ShowsMarksOnly)
{
    EXPECT_EQ(field().echoMode(), QLineEdit::Password);
    EXPECT_FALSE(field().displayText().contains('s'));
    EXPECT_EQ(field().displayText().size(), 6);
    EXPECT_EQ(field().style()->styleHint(QStyle::SH_LineEdit_PasswordMaskDelay), 0);
}

TEST_F(SecureTextField, NeitherCopyNorCutReachTheClipboard)
{
    QClipboard& clipboard = *QGuiApplication::clipboard();
    clipboard.setText("before");
    field().selectAll();
    field().copy();
    press(Qt::Key_C, "\x03", Qt::ControlModifier);
    press(Qt::Key_Insert, QString(), Qt::ControlModifier);
    press(Qt::Key_X, "\x18", Qt::ControlModifier);
    field().setText("secret");
    field().selectAll();
    field().cut();
    press(Qt::Key_Delete, QString(), Qt::ShiftModifier);

    EXPECT_EQ(clipboard.text(), "before");
}

TEST_F(SecureTextField, NothingCanBeBroughtBackByUndo)
{
    field().clear();
    press(Qt::Key_Z, "\x1a", Qt::ControlModifier);
    field().undo();
    field().redo();

    EXPECT_EQ(field().text(), "");
    EXPECT_FALSE(field().isUndoAvailable());
}

TEST_F(SecureTextField, OpensNoContextMenu)
{
    const QPoint middle = field().rect().center();
    QMouseEvent rightDown(
        QEvent::MouseButtonPress,
        middle,
        field().mapToGlobal(middle),
        Qt::RightButton,
        Qt::RightButton,
        Qt::NoModifier
    );
    QContextMenuEvent menu(QContextMenuEvent::Keyboard, middle, field().mapToGlobal(middle));
    QCoreApplication::sendEvent(&field(), &rightDown);
    QCoreApplication::sendEvent(&field(), &menu);
    press(Qt::Key_Menu);
    press(Qt::Key_F10, QString(), Qt::ShiftModifier);
    QCoreApplication::processEvents();

    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(SecureTextField, NeitherGivesNorTakesADrag)
{
    EXPECT_FALSE(field().dragEnabled());
    EXPECT_FALSE(field().acceptDrops());
}

TEST_F(SecureTextField, AssistiveToolsHearThatItIsAPasswordAndNotWhichOne)
{
    support::expectHeardAsPassword(field(), "s");
}

TEST_F(SecureTextField, InputMethodsAreToldToRememberNothing)
{
    const auto hints = Qt::InputMethodHints(field().inputMethodQuery(Qt::ImHints).toInt());
    EXPECT_TRUE(hints.testFlag(Qt::ImhHiddenText));
    EXPECT_TRUE(hints.testFlag(Qt::ImhSensitiveData));
    EXPECT_TRUE(hints.testFlag(Qt::ImhNoPredictiveText));
}

TEST_F(SecureTextField, InputMethodsAreToldNothingOfTheText)
{
    field().selectAll();
    for (const Qt::InputMethodQuery query :
         {Qt::ImSurroundingText,
          Qt::ImCurrentSelection,
          Qt::ImTextBeforeCursor,
          Qt::ImTextAfterCursor}) {
        QInputMethodQueryEvent asked(query);
        QCoreApplication::sendEvent(&field(), &asked);
        const QVariant answer = QInputMethod::queryFocusObject(query, QVariant());
        EXPECT_EQ(asked.value(query).toString() + answer.toString(), "") << query;
    }
    EXPECT_TRUE(QInputMethod::queryFocusObject(Qt::ImCursorPosition, QVariant()).isValid());
}

TEST_F(SecureTextField, OtherKeysChangeNothing)
{
    takeCalls();
    press(Qt::Key_Escape, "\x1b");
    press(Qt::Key_Tab, "\t");
    press(Qt::Key_Backtab, QString(), Qt::ShiftModifier);
    press(Qt::Key_Space, " ", Qt::AltModifier);
    press(Qt::Key_F4, QString(), Qt::AltModifier);
    press(Qt::Key_Q, "\x11", Qt::ControlModifier);
    press(Qt::Key_W, "\x17", Qt::ControlModifier);
    press(Qt::Key_F1);
    press(Qt::Key_Print);
    press(Qt::Key_Super_L);
    press(Qt::Key_Delete, QString(), Qt::ControlModifier | Qt::AltModifier);
    QCoreApplication::processEvents();

    EXPECT_EQ(field().text(), "secret");
    EXPECT_EQ(window().focusWidget(), &field());
    EXPECT_TRUE(window().isVisible());
    EXPECT_TRUE(entered.empty());
    EXPECT_TRUE(takeCalls().empty());
}

TEST_F(SecureTextField, AClickBesideItLeavesItTheFocus)
{
    QMouseEvent click(
        QEvent::MouseButtonPress, QPointF(5, 5), QPointF(5, 5), Qt::LeftButton, Qt::LeftButton, {}
    );
    QCoreApplication::sendEvent(&window(), &click);

    EXPECT_EQ(window().focusWidget(), &field());
}
