// A lock window on a desktop in memory, drawn on the toolkit's offscreen platform.
#pragma once

#include "fakes/FakePlatform.h"
#include "locking/window/BorderlessKeyWindow.h"
#include "locking/window/PasswordWindowController.h"
#include "toolkit/QtIcon.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

class LockWindowTest : public testing::Test
{
protected:
    LockWindowTest() { makeController(); }

    void TearDown() override
    {
        controller.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QApplication::setLayoutDirection(Qt::LeftToRight);
    }

    void makeController()
    {
        controller = std::make_unique<locking::PasswordWindowController>();
        controller->passwordEntered = [this](const std::string& typed) {
            entered.push_back(typed);
        };
        controller->specialKeyPressed = [this] { ++specialKeyPresses; };
    }

    /// A new lock on a main screen of that size, shown.
    void showOn(int width, int height, const std::string& message = "Calculator is locked")
    {
        fake.screens.list->front().frame = {0, 0, width, height};
        makeController();
        show(message);
    }

    void show(
        const std::string& message = "Calculator is locked",
        const platform::IconHandle& icon = nullptr
    )
    {
        controller->showServiceWindow(message, icon);
        fake.dispatchQueues.runAll();
        QCoreApplication::processEvents();
    }

    [[nodiscard]] QWidget& window() const { return controller->window(); }

    template <typename Widget = QWidget> [[nodiscard]] Widget& outlet(const char* name) const
    {
        auto* const found = window().findChild<Widget*>(name);
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }

    [[nodiscard]] QLineEdit& field() const { return outlet<QLineEdit>("passwordFieldOutlet"); }

    /// Where a control is in the window.
    [[nodiscard]] QRect place(const char* name) const
    {
        const QWidget& widget = outlet(name);
        return {widget.mapTo(&window(), QPoint(0, 0)), widget.size()};
    }

    void press(
        int key, const QString& text = QString(), Qt::KeyboardModifiers modifiers = Qt::NoModifier
    )
    {
        QKeyEvent down(QEvent::KeyPress, key, modifiers, text);
        QKeyEvent up(QEvent::KeyRelease, key, modifiers, text);
        QCoreApplication::sendEvent(&field(), &down);
        QCoreApplication::sendEvent(&field(), &up);
    }

    void type(const QString& text)
    {
        for (const char32_t character : text.toStdU32String()) {
            press(Qt::Key_unknown, QString::fromUcs4(&character, 1));
        }
    }

    void pressReturn() { press(Qt::Key_Return, "\r"); }

    /// The calls since the last time they were taken.
    fakes::Calls takeCalls() { return std::exchange(fake.calls, {}); }

    static platform::RunningApplication application(const std::string& bundleIdentifier)
    {
        return {.processIdentifier = 42, .bundleIdentifier = bundleIdentifier};
    }

    void activated(const std::string& bundleIdentifier)
    {
        fake.workspace.notifyApplication(
            platform::WorkspaceNotificationName::DidActivateApplication,
            application(bundleIdentifier)
        );
    }

    void deactivated(const std::string& bundleIdentifier)
    {
        fake.workspace.notifyApplication(
            platform::WorkspaceNotificationName::DidDeactivateApplication,
            application(bundleIdentifier)
        );
    }

    static constexpr auto AGENT = "com.quorvent.Tarvel";
    static constexpr auto CALCULATOR = "org.gnome.Calculator";

    fakes::FakePlatform fake;
    std::unique_ptr<locking::PasswordWindowController> controller;
    std::vector<std::string> entered;
    int specialKeyPresses = 0;
};
