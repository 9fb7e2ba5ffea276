// Gives a test program a desktop of its own, and the toolkit's application object on it, for as
// long as its tests run.
#pragma once

#include "desktop/Desktop.h"

#include <QApplication>

#include <array>
#include <memory>
#include <string>
#include <utility>

#include <gtest/gtest.h>

namespace support {

class QtOnPrivateDesktop : public testing::Environment
{
public:
    explicit QtOnPrivateDesktop(desktop::Desktop::Parts parts) : parts(std::move(parts)) {}

    void SetUp() override
    {
        session = std::make_unique<desktop::Desktop>(parts);
        qputenv("DISPLAY", session->server().displayName().c_str());
        qputenv("QT_QPA_PLATFORM", "xcb");
        qputenv("LC_ALL", "C.UTF-8");
        if (parts.bus) {
            qputenv("DBUS_SESSION_BUS_ADDRESS", session->bus().address().c_str());
        }
        application = std::make_unique<QApplication>(argumentCount, arguments.data());
    }

    void TearDown() override
    {
        application.reset();
        session.reset();
    }

    desktop::Desktop& desktop() { return *session; }

private:
    desktop::Desktop::Parts parts;
    std::unique_ptr<desktop::Desktop> session;
    std::string name = "tests";
    std::array<char*, 2> arguments{name.data(), nullptr};
    int argumentCount = 1;
    std::unique_ptr<QApplication> application;
};

} // namespace support
