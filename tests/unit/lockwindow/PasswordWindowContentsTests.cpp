// The name, the icon and the state of the keyboard in the lock window.
#include "PasswordWindowLookTest.h"
#include "locking/window/MessageLabel.h"
#include "qt/Contrast.h"

#include <QPushButton>

using support::contrast;

TEST_F(PasswordWindowLook, ALongNameWrapsOnceAndIsShortenedBeforeIsLocked)
{
    const std::string message = std::string(300, 'M') + " is locked";
    show(message);
    const auto& label = outlet<locking::MessageLabel>("appNameLabelOutlet");
    const QStringList lines = label.lines();
    ASSERT_EQ(lines.size(), 2);
    EXPECT_TRUE(lines[1].contains(QChar(0x2026)));
    EXPECT_TRUE(lines[1].endsWith(" is locked"));
    const QFontMetrics metrics = label.fontMetrics();
    EXPECT_LE(metrics.horizontalAdvance(lines[0]), label.width());
    EXPECT_LE(metrics.horizontalAdvance(lines[1]), label.width());
    EXPECT_EQ(label.text(), QString::fromStdString(message));
}

TEST_F(PasswordWindowLook, AShortNameStaysOnOneLine)
{
    show("Calculator is locked");
    const auto& label = outlet<locking::MessageLabel>("appNameLabelOutlet");
    EXPECT_EQ(label.lines(), QStringList("Calculator is locked"));
}

TEST_F(PasswordWindowLook, MarkupAndLineBreaksInANameAreShownAsText)
{
    show("<h1>A</h1>\nB is locked");
    const auto& label = outlet<locking::MessageLabel>("appNameLabelOutlet");
    EXPECT_EQ(label.lines(), QStringList("<h1>A</h1> B is locked"));
}

TEST_F(PasswordWindowLook, AnEmptyNameStillShowsTheLock)
{
    show(" is locked");
    const auto& label = outlet<locking::MessageLabel>("appNameLabelOutlet");
    EXPECT_EQ(label.lines(), QStringList("is locked"));
    show("");
    EXPECT_EQ(label.lines(), QStringList());
    EXPECT_EQ(misplaced(), "");
}

TEST_F(PasswordWindowLook, TheIconIsDrawnAtItsFullSize)
{
    QPixmap red(512, 512);
    red.fill(Qt::red);
    show("Calculator is locked", std::make_shared<toolkit::QtIcon>([red] { return QIcon(red); }));

    EXPECT_EQ(outlet<QLabel>("appIconOutlet").pixmap().size(), QSize(128, 128));
    EXPECT_EQ(picture().pixelColor(place("appIconOutlet").topLeft()), QColor(Qt::red));
}

TEST_F(PasswordWindowLook, ASmallIconIsAtMostDoubled)
{
    QPixmap red(48, 48);
    red.fill(Qt::red);
    show("Calculator is locked", std::make_shared<toolkit::QtIcon>([red] { return QIcon(red); }));

    EXPECT_EQ(outlet<QLabel>("appIconOutlet").pixmap().size(), QSize(96, 96));
}

TEST_F(PasswordWindowLook, WithoutAnIconThereIsAPadlock)
{
    const auto foreign = std::make_shared<fakes::FakeIcon>("not the toolkit's");
    for (const platform::IconHandle& icon :
         {platform::IconHandle(), platform::IconHandle(foreign)}) {
        show("Calculator is locked", icon);
        const QPoint body = place("appIconOutlet").center() + QPoint(-20, 20);
        EXPECT_EQ(picture().pixelColor(body), QColor(226, 229, 235));
    }
}

TEST_F(PasswordWindowLook, CapsLockAndLayoutAreShownAsTheyChange)
{
    show();
    QWidget& capsLock = outlet("capsLockLabel");
    QLabel& layout = outlet<QLabel>("keyboardLayoutLabel");
    EXPECT_FALSE(capsLock.isVisible());
    EXPECT_EQ(layout.text(), "Keyboard: us");

    fake.keyboardStatus.set(true, "de");
    EXPECT_TRUE(capsLock.isVisible());
    EXPECT_EQ(layout.text(), "Keyboard: de");
    EXPECT_EQ(field().accessibleDescription(), "Caps Lock is on");

    fake.keyboardStatus.set(false, "");
    EXPECT_FALSE(capsLock.isVisible());
    EXPECT_EQ(layout.text(), "");
    EXPECT_EQ(field().accessibleDescription(), "");
}

TEST_F(PasswordWindowLook, TheLayoutIsAButtonWhereThereIsAnotherOne)
{
    show();
    auto& button = outlet<QPushButton>("keyboardLayoutButton");
    EXPECT_FALSE(button.isVisible());
    EXPECT_TRUE(outlet("keyboardLayoutLabel").isVisible());
    const QRect label = place("keyboardLayoutLabel");

    fake.keyboardStatus.setLayouts({"us", "ru"});
    QCoreApplication::processEvents();
    EXPECT_TRUE(button.isVisible());
    EXPECT_FALSE(outlet("keyboardLayoutLabel").isVisible());
    EXPECT_EQ(button.text(), "Keyboard: us");
    EXPECT_EQ(button.accessibleName(), "Keyboard layout: us. Switch to the next one");
    EXPECT_EQ(place("keyboardLayoutButton").right(), label.right());
    EXPECT_GE(contrast(textColor("keyboardLayoutButton"), LOCK), 4.5);
    EXPECT_EQ(misplaced(), "");

    fake.keyboardStatus.setLayouts({"", "ru"});
    EXPECT_FALSE(button.isVisible());
}
