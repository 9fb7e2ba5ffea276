// What a user sees: colours, places and sizes on screens of every kind.
#include "LockWindowTest.h"
#include "locking/window/MessageLabel.h"
#include "qt/Contrast.h"

#include <QPushButton>
#include <QScreen>
#include <QStyleHints>

#include <cstdlib>

namespace {

const std::vector<const char*> CONTROLS{
    "appIconOutlet",
    "appNameLabelOutlet",
    "passwordFieldOutlet",
    "keyboardView",
    "errorMessageLabelOutlet"};

const QColor LOCK(65, 68, 75);
const QColor WHITE(Qt::white);

using support::contrast;

class PasswordWindowLook : public LockWindowTest
{
protected:
    [[nodiscard]] QImage picture() const { return window().grab().toImage(); }

    [[nodiscard]] QColor ground() const
    {
        const QRect field = place("passwordFieldOutlet");
        return picture().pixelColor(field.right() - 12, field.center().y());
    }

    [[nodiscard]] QColor textColor(const char* name) const
    {
        return outlet(name).palette().color(QPalette::WindowText);
    }

    /// Columns of the field's middle row that are pure white.
    [[nodiscard]] std::vector<int> whiteColumns() const
    {
        const QImage image = picture();
        const QRect field = place("passwordFieldOutlet");
        std::vector<int> columns;
        for (int x = field.left(); x <= field.right(); ++x) {
            // above the marks, within the caret
            if (image.pixelColor(x, field.center().y() - 8) == WHITE) {
                columns.push_back(x - field.left());
            }
        }
        return columns;
    }

    [[nodiscard]] std::string misplaced() const
    {
        int above = 0;
        for (const char* name : CONTROLS) {
            const QRect where = place(name);
            if (!window().rect().contains(where)) {
                return std::string(name) + " is cut off";
            }
            if (where.top() < above) {
                return std::string(name) + " overlaps the one above";
            }
            if (std::abs(where.center().x() - window().rect().center().x()) > 1) {
                return std::string(name) + " is not centred";
            }
            above = where.bottom();
        }
        return "";
    }
};

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
    const std::vector<int> before = whiteColumns();
    ASSERT_FALSE(before.empty());
    EXPECT_LT(before.front(), 20);
    type("abc");
    const std::vector<int> after = whiteColumns();
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
