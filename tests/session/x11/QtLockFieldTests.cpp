// That a toolkit's own window is typed into as usual while the guard holds the keyboard: the field
// takes what the guard hands on.
#include "desktop/Desktop.h"
#include "linux/qt/QtDispatchQueues.h"
#include "linux/qt/QtTimers.h"
#include "linux/x11/X11Application.h"
#include "linux/x11/X11Desktop.h"
#include "linux/x11/X11Guard.h"
#include "linux/x11/X11WindowSystem.h"
#include "linux/x11/X11Windows.h"
#include "qt/QtOnPrivateDesktop.h"
#include "qt/WaitFor.h"
#include "toolkit/EditingField.h"

#include <QApplication>
#include <QLineEdit>
#include <QVBoxLayout>

#include <chrono>
#include <iostream>
#include <memory>
#include <string_view>

#include <gtest/gtest.h>

namespace {

auto* const ENVIRONMENT = new support::QtOnPrivateDesktop({.bus = false, .keyring = false});
[[maybe_unused]] const auto* const REGISTERED = testing::AddGlobalTestEnvironment(ENVIRONMENT);

void syncToolkit()
{
    auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    const x11::Reply<xcb_get_input_focus_reply_t> answer(xcb_get_input_focus_reply(
        x11->connection(), xcb_get_input_focus(x11->connection()), nullptr
    ));
}

class QtLockField : public testing::Test
{
protected:
    static constexpr platform::Rect FRAME{0, 0, 1280, 720};

    QtLockField()
    {
        window.setWindowFlags(Qt::BypassWindowManagerHint | Qt::FramelessWindowHint);
        window.setGeometry(0, 0, 1280, 720);
        auto* const layout = new QVBoxLayout(&window);
        layout->addWidget(&field);
        layout->addWidget(&other);
        field.setEchoMode(QLineEdit::Password);
        field.setFocus();
        QObject::connect(&field, &QLineEdit::returnPressed, [this] { submitted = field.text(); });
    }

    void cover()
    {
        guard.cover();
        ASSERT_TRUE(support::waitFor([this] { return guard.captured(); }));
    }

    void showLock()
    {
        platform::WindowAttributes attributes;
        attributes.backgroundColor = platform::LOCK_COLOR;
        attributes.level = platform::WindowLevelKey::ScreenSaver;
        attributes.frame = FRAME;
        adopted = windows.adoptWindow(window.winId(), attributes);
        window.show();
        adopted->makeKeyAndOrderFront();
    }

    bool reads(const QString& text)
    {
        return support::waitFor([&] { return field.text() == text; });
    }

    bool hasCaret()
    {
        return QApplication::focusWindow() == window.windowHandle() && window.isActiveWindow() &&
               QApplication::focusWidget() == &field;
    }

    void setKeyboard(const std::vector<std::string>& arguments)
    {
        std::vector<std::string> command{"setxkbmap"};
        command.insert(command.end(), arguments.begin(), arguments.end());
        auto process = session.start(command);
        ASSERT_EQ(0, process.waitForExitStatus(std::chrono::seconds(10)));
    }

    desktop::Desktop& session = ENVIRONMENT->desktop();
    desktop::Input& input = session.input();
    qt::QtDispatchQueues queues;
    qt::QtTimers timers;

    static void report(std::string_view line) { std::cerr << line << '\n'; }

    x11::X11Desktop display{
        x11::Connection::open(session.server().displayName()), queues, &QtLockField::report};
    x11::X11Guard guard{
        x11::Connection::open(session.server().displayName()), queues, &QtLockField::report};
    x11::X11Windows windows{guard, display, syncToolkit};
    QWidget window;
    toolkit::EditingField field;
    QLineEdit other;
    QString submitted;
    std::unique_ptr<platform::PlainWindow> adopted;
};

TEST_F(QtLockField, TakesTextInBothCases)
{
    cover();
    showLock();
    const std::string text = "aAbBcC Correct Horse 42, Battery-Staple! xXyYzZ";
    input.type(text);
    EXPECT_TRUE(reads(QString::fromStdString(text)));
}

TEST_F(QtLockField, TakesWhatWasTypedBeforeItCameUp)
{
    cover();
    input.type("Early");
    showLock();
    input.type("Late");
    EXPECT_TRUE(reads("EarlyLate"));
}

TEST_F(QtLockField, TakesBackspaceAndReturn)
{
    cover();
    showLock();
    input.type("secretx");
    input.press(desktop::KEY_BACKSPACE);
    input.press(desktop::KEY_RETURN);
    EXPECT_TRUE(support::waitFor([this] { return submitted == "secret"; }));
}

TEST_F(QtLockField, ShowsItsCaret)
{
    cover();
    showLock();
    EXPECT_TRUE(support::waitFor([this] { return hasCaret(); }));
}

TEST_F(QtLockField, ShowsItsCaretAlsoWhenTheCaptureComesLater)
{
    showLock();
    ASSERT_TRUE(support::waitFor([this] { return hasCaret(); }));
    cover();
    input.type("a");
    ASSERT_TRUE(reads("a"));
    // What the grab's own focus events do to the toolkit is over by its next delayed look at them.
    bool looked = false;
    timers.scheduleTimer(0.6, false, [&] { looked = true; });
    ASSERT_TRUE(support::waitFor([&] { return looked; }));
    EXPECT_TRUE(hasCaret());
}

TEST_F(QtLockField, TakesTheOtherLayoutAfterASwitch)
{
    constexpr std::uint32_t KEY_SHIFT_RIGHT = 0xFFE2;
    setKeyboard({"-layout", "us,de", "-option", "grp:shifts_toggle"});
    cover();
    showLock();
    input.type("y");
    input.hold(desktop::KEY_SHIFT);
    input.hold(KEY_SHIFT_RIGHT);
    input.release(KEY_SHIFT_RIGHT);
    input.release(desktop::KEY_SHIFT);
    input.type("y"); // the same key
    EXPECT_TRUE(reads("yz"));
}

TEST_F(QtLockField, TakesDeadKeys)
{
    setKeyboard({"-layout", "us", "-variant", "intl", "-option", ""});
    constexpr std::uint32_t DEAD_ACUTE = 0xFE51;
    cover();
    showLock();
    input.press(DEAD_ACUTE);
    input.type("e");
    EXPECT_TRUE(reads(QString::fromUtf8("\xC3\xA9")));
}

TEST_F(QtLockField, AHeldKeyRepeats)
{
    cover();
    showLock();
    input.hold('r');
    EXPECT_TRUE(support::waitFor([this] { return field.text().size() >= 4; }));
    input.release('r');
    EXPECT_EQ(field.text().size(), field.text().count('r'));
}

TEST_F(QtLockField, IsReachedByAClick)
{
    cover();
    showLock();
    input.type("k");
    ASSERT_TRUE(reads("k"));
    const QPoint place = other.mapToGlobal(other.rect().center());
    input.click(static_cast<std::int16_t>(place.x()), static_cast<std::int16_t>(place.y()));
    EXPECT_TRUE(support::waitFor([this] { return QApplication::focusWidget() == &other; }));
    input.type("o");
    EXPECT_TRUE(support::waitFor([this] { return other.text() == "o"; }));
    EXPECT_EQ("k", field.text());
}

} // namespace
