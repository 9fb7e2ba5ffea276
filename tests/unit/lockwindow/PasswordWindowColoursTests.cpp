// The colours of the lock window, whatever those of the desktop are.
#include "PasswordWindowLookTest.h"
#include "qt/Contrast.h"

#include <QStyleHints>

namespace {

using support::contrast;

const QColor WHITE(Qt::white);

/// Columns of the field's middle row that are pure white.
std::vector<int> whiteColumns(const QImage& image, const QRect& field)
{
    std::vector<int> columns;
    for (int x = field.left(); x <= field.right(); ++x) {
        // above the marks, within the caret
        if (image.pixelColor(x, field.center().y() - 8) == WHITE) {
            columns.push_back(x - field.left());
        }
    }
    return columns;
}

} // namespace

TEST_F(PasswordWindowLook, TheWholeGroundIsTheLocksColour)
{
    show();
    const QImage image = picture();
    for (const QPoint corner :
         {QPoint(0, 0), QPoint(1279, 0), QPoint(0, 719), QPoint(1279, 719), QPoint(640, 150)}) {
        EXPECT_EQ(image.pixelColor(corner), LOCK);
    }
}

TEST_F(PasswordWindowLook, TheFieldIsWhiteAtAFifthWithRoundCorners)
{
    show();
    EXPECT_EQ(ground(), QColor(103, 105, 111)); // 0.8 of the lock's colour and 0.2 of white
    const QRect field = place("passwordFieldOutlet");
    EXPECT_EQ(picture().pixelColor(field.topLeft()), LOCK);
    EXPECT_EQ(picture().pixelColor(field.topLeft() + QPoint(6, 0)), ground());
}

TEST_F(PasswordWindowLook, TheCaretIsWhiteAndFollowsWhatIsTyped)
{
    QGuiApplication::styleHints()->setCursorFlashTime(0);
    show();
    const std::vector<int> before = whiteColumns(picture(), place("passwordFieldOutlet"));
    ASSERT_FALSE(before.empty());
    EXPECT_LT(before.front(), 20);
    type("abc");
    const std::vector<int> after = whiteColumns(picture(), place("passwordFieldOutlet"));
    ASSERT_FALSE(after.empty());
    EXPECT_GT(after.front(), before.front() + 15);
    EXPECT_LE(after.size(), 2U);
}

TEST_F(PasswordWindowLook, EveryTextStandsOutFromItsGround)
{
    show();
    for (const char* name :
         {"appNameLabelOutlet",
          "capsLockLabel",
          "keyboardLayoutLabel",
          "errorMessageLabelOutlet"}) {
        EXPECT_GE(contrast(textColor(name), LOCK), 4.5) << name;
    }
    EXPECT_GE(contrast(field().palette().color(QPalette::Text), ground()), 4.5);
}

TEST_F(PasswordWindowLook, ColoursDoNotFollowTheDesktops)
{
    const QPalette before = QApplication::palette();
    QApplication::setPalette(QPalette(Qt::red, Qt::green));
    makeController();
    show();

    EXPECT_EQ(picture().pixelColor(0, 0), LOCK);
    EXPECT_EQ(ground(), QColor(103, 105, 111));
    EXPECT_EQ(textColor("appNameLabelOutlet"), WHITE);
    QApplication::setPalette(before);
}

TEST_F(PasswordWindowLook, IsDrawnAloneWhateverTheSheetOfTheWholeProgramSays)
{
    QGuiApplication::styleHints()->setCursorFlashTime(0);
    fake.keyboardStatus.set(true, "de");
    const auto draw = [this] {
        makeController();
        controller->displayErrorMessage("Wrong password");
        show();
        type("abc");
        field().selectAll();
        window().findChild<QAbstractAnimation*>("position")->stop();
        return picture();
    };
    const QImage alone = draw();
    qApp->setStyleSheet(
        "QWidget { color: red; background: green; selection-background-color: blue; }"
        "QLabel { margin: 3px; padding: 5px; border: 2px solid red; background: red; }"
        "QLineEdit { min-height: 90px; padding: 9px; border: 4px solid red; background: blue; }"
        "QLineEdit:focus { border: 7px solid yellow; color: yellow; }"
        "QLabel#capsLockLabel { color: black; }"
    );
    const QImage amongOthers = draw();
    qApp->setStyleSheet({});

    EXPECT_EQ(amongOthers, alone);
}
