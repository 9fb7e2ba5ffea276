// Places and sizes in the lock window, on screens of every kind.
#include "PasswordWindowLookTest.h"

#include <QScreen>

TEST_F(PasswordWindowLook, EverythingFitsOnEveryScreen)
{
    const std::string message =
        "An Application with a Name That Goes on and on without Any End in Sight is locked";
    for (const QSize size :
         {QSize(320, 240),
          QSize(640, 480),
          QSize(1280, 720),
          QSize(1920, 1080),
          QSize(3840, 2160),
          QSize(1080, 1920),
          QSize(5120, 1440)}) {
        showOn(size.width(), size.height(), message);
        controller->displayErrorMessage("Wrong password");
        fake.keyboardStatus.set(true, "us(dvorak)");
        fake.dispatchQueues.runAll();
        QCoreApplication::processEvents();
        EXPECT_EQ(misplaced(), "") << size.width() << "x" << size.height();
    }
}

TEST_F(PasswordWindowLook, MovesToTheMainScreenWithWhatIsTyped)
{
    showOn(1280, 720);
    field().setText("half of it");
    const QRect before = place("passwordFieldOutlet");
    fake.screens.list->front().frame = {1280, 0, 1280, 720};

    controller->screensChanged();
    fake.dispatchQueues.runAll();
    QCoreApplication::processEvents();

    EXPECT_EQ(window().geometry(), QRect(1280, 0, 1280, 720));
    EXPECT_EQ(place("passwordFieldOutlet"), before);
    EXPECT_EQ(field().text(), "half of it");
}

TEST_F(PasswordWindowLook, ALiftedLockDoesNotComeBackWithAnotherArrangementOfScreens)
{
    showOn(1280, 720);
    controller->close();

    controller->screensChanged();
    fake.dispatchQueues.runAll();
    QCoreApplication::processEvents();

    EXPECT_FALSE(window().isVisible());
}

TEST_F(PasswordWindowLook, SizesGrowWithAScreenOfMorePixels)
{
    showOn(1280, 720);
    EXPECT_EQ(place("appIconOutlet").size(), QSize(128, 128));
    EXPECT_EQ(place("passwordFieldOutlet").width(), 320);
    const int typeSize = outlet("appNameLabelOutlet").font().pixelSize();
    EXPECT_GE(typeSize, 28);

    showOn(1920, 1080);
    EXPECT_EQ(place("appIconOutlet").size(), QSize(128, 128));

    showOn(3840, 2160);
    EXPECT_EQ(place("appIconOutlet").size(), QSize(256, 256));
    EXPECT_EQ(place("passwordFieldOutlet").width(), 640);
    EXPECT_EQ(outlet("appNameLabelOutlet").font().pixelSize(), 2 * typeSize);
}

TEST_F(PasswordWindowLook, IsTheSameAgainWhenTheScreenHasItsOldSizeAgain)
{
    const auto places = [this] {
        std::vector<QRect> all;
        for (const char* name : CONTROLS) {
            all.push_back(place(name));
        }
        return all;
    };
    const auto resize = [this](int width, int height) {
        fake.screens.list->front().frame = {0, 0, width, height};
        const QScreen* screen = QGuiApplication::primaryScreen();
        emit const_cast<QScreen*>(screen)->geometryChanged(screen->geometry());
        fake.dispatchQueues.runAll();
        QCoreApplication::processEvents();
    };
    showOn(1280, 720);
    const std::vector<QRect> before = places();
    resize(3840, 2160);
    EXPECT_EQ(misplaced(), "");
    EXPECT_NE(places(), before);
    resize(1280, 720);
    EXPECT_EQ(places(), before);
}

TEST_F(PasswordWindowLook, MovesToTheMainScreenWhenTheToolkitLearnsOfAScreen)
{
    showOn(1280, 720);
    fake.screens.list->front().frame = {1280, 0, 1280, 720};

    emit qGuiApp->screenAdded(QGuiApplication::primaryScreen());
    fake.dispatchQueues.runAll();
    QCoreApplication::processEvents();

    EXPECT_EQ(window().geometry(), QRect(1280, 0, 1280, 720));
}

TEST_F(PasswordWindowLook, NothingJumpsWhenTheErrorOrCapsLockAppears)
{
    show();
    std::vector<QRect> before;
    std::vector<QRect> after;
    for (const char* name : CONTROLS) {
        before.push_back(place(name));
    }
    controller->displayErrorMessage("Wrong password");
    fake.keyboardStatus.set(true, "de");
    fake.dispatchQueues.runAll();
    window().findChild<QAbstractAnimation*>("position")->setCurrentTime(400);
    for (const char* name : CONTROLS) {
        after.push_back(place(name));
    }
    EXPECT_EQ(before, after);
}

TEST_F(PasswordWindowLook, IsMirroredWhereTextRunsFromRightToLeft)
{
    fake.keyboardStatus.set(true, "il");
    show();
    EXPECT_LT(place("capsLockLabel").x(), place("keyboardLayoutLabel").x());
    const QRect field = place("passwordFieldOutlet");

    QApplication::setLayoutDirection(Qt::RightToLeft);
    makeController();
    show();
    EXPECT_GT(place("capsLockLabel").x(), place("keyboardLayoutLabel").x());
    EXPECT_EQ(place("passwordFieldOutlet"), field);
    EXPECT_EQ(misplaced(), "");
}
