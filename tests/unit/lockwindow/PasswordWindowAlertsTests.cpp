// What of this program's own may be open while it locks: nothing of it keeps keys or clicks from
// the lock. Keys and clicks come here the way the window system delivers them.
#include "LockWindowTest.h"

#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QTest>
#include <QWindow>

namespace {

class PasswordWindowAlerts : public LockWindowTest
{
protected:
    static void open(QMessageBox& alert, Qt::WindowModality modality)
    {
        alert.setText("There was an error");
        alert.addButton(QMessageBox::Ok);
        alert.setWindowModality(modality);
        alert.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&alert));
    }

    /// What the field holds after these keys.
    QString typed(const QString& text)
    {
        field().clear();
        for (const QChar character : text) {
            QTest::keyClick(window().windowHandle(), character.toLatin1());
        }
        return field().text();
    }

    /// Whether a click into the field arrives there.
    bool isClickable()
    {
        field().setText("secret");
        field().setCursorPosition(6);
        const QPoint start = field().mapTo(&window(), QPoint(12, field().height() / 2));
        QTest::mouseClick(window().windowHandle(), Qt::LeftButton, {}, start);
        return field().cursorPosition() == 0;
    }
};

} // namespace

TEST_F(PasswordWindowAlerts, WithNoneOpenKeysAndClicksReachTheField)
{
    show();
    EXPECT_EQ(typed("secret"), "secret");
    EXPECT_TRUE(isClickable());
}

TEST_F(PasswordWindowAlerts, AnAlertOfTheWholeProgramThatIsOpenDoesNotBlockTheLock)
{
    QMessageBox alert;
    open(alert, Qt::ApplicationModal);
    show();

    EXPECT_EQ(typed("secret"), "secret");
    EXPECT_TRUE(isClickable());
}

TEST_F(PasswordWindowAlerts, AnAlertOfTheWholeProgramThatOpensLaterDoesNotBlockTheLock)
{
    QMessageBox alert;
    show();
    open(alert, Qt::ApplicationModal);

    EXPECT_EQ(typed("secret"), "secret");
    EXPECT_TRUE(isClickable());
}

TEST_F(PasswordWindowAlerts, ASheetDoesNotBlockTheLock)
{
    QWidget other;
    other.show();
    QMessageBox before(&other);
    QMessageBox after(&other);
    open(before, Qt::WindowModal);
    show();
    EXPECT_EQ(typed("secret"), "secret");
    open(after, Qt::WindowModal);

    EXPECT_EQ(typed("secret"), "secret");
    EXPECT_TRUE(isClickable());
}

TEST_F(PasswordWindowAlerts, SeveralAlertsThatComeAndGoInAnyOrderLeaveTheLockFree)
{
    auto first = std::make_unique<QMessageBox>();
    auto second = std::make_unique<QMessageBox>();
    open(*first, Qt::ApplicationModal);
    show();
    open(*second, Qt::ApplicationModal);
    EXPECT_EQ(typed("both"), "both");

    second.reset();
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(typed("one"), "one");

    second = std::make_unique<QMessageBox>();
    open(*second, Qt::ApplicationModal);
    first.reset();
    EXPECT_EQ(typed("other"), "other");

    second->done(0);
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(typed("none"), "none");
}

TEST_F(PasswordWindowAlerts, KeysThatTheToolkitGivesAnotherWindowReachTheField)
{
    QLineEdit other;
    show();
    other.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&other));
    for (const char character : {'k', 'e', 'y'}) {
        QTest::keyClick(other.windowHandle(), character);
    }
    QTest::keyClick(other.windowHandle(), Qt::Key_Return);

    EXPECT_EQ(other.text(), "");
    EXPECT_EQ(entered, std::vector<std::string>{"key"});
}

TEST_F(PasswordWindowAlerts, AfterTheLockEachWindowHasItsKeysAgain)
{
    QLineEdit other;
    show();
    other.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&other));
    controller->close();
    QTest::keyClick(other.windowHandle(), 'k');

    EXPECT_EQ(other.text(), "k");
}

TEST_F(PasswordWindowAlerts, ALockThatReplacesALockIsFreeToo)
{
    QMessageBox alert;
    open(alert, Qt::ApplicationModal);
    show();
    makeController();
    show();

    EXPECT_EQ(typed("secret"), "secret");
}

TEST_F(PasswordWindowAlerts, TheAlertStaysUsableAfterTheLock)
{
    QMessageBox alert;
    open(alert, Qt::ApplicationModal);
    show();
    controller->close();
    EXPECT_TRUE(alert.isVisible());
    QTest::keyClick(alert.windowHandle(), Qt::Key_Return);

    EXPECT_FALSE(alert.isVisible());
}

TEST_F(PasswordWindowAlerts, OpenMenusAreClosed)
{
    QMenu menu;
    QMenu* const inner = menu.addMenu("More");
    inner->addAction("Quit");
    menu.popup(QPoint(0, 0));
    inner->popup(QPoint(50, 50));
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    show();

    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_FALSE(menu.isVisible());
    EXPECT_EQ(typed("secret"), "secret");
}
