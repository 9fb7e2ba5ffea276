// A lock window on no screen. Its number is its place in the order of creation; it records every
// call, its end included. One thread.
#pragma once

#include "fakes/Calls.h"
#include "locking/LockWindow.h"

namespace fakes {

class FakeLockWindow final : public locking::LockWindow
{
public:
    FakeLockWindow(Calls& calls, int number) : calls(calls), number(number) { record("create"); }

    FakeLockWindow(const FakeLockWindow&) = delete;
    FakeLockWindow& operator=(const FakeLockWindow&) = delete;
    FakeLockWindow(FakeLockWindow&&) = delete;
    FakeLockWindow& operator=(FakeLockWindow&&) = delete;

    ~FakeLockWindow() override { record("destroy"); }

    void showServiceWindow(const std::string& message, const platform::IconHandle& appIcon) override
    {
        record("showServiceWindow " + message);
        icon = appIcon;
        isUp = true;
    }

    void focus() override { record("focus"); }

    void screensChanged() override { record("screensChanged"); }

    void displayErrorMessage(const std::string& message) override
    {
        record("displayErrorMessage '" + message + "'");
    }

    void teardown() override { record("teardown"); }

    void close() override
    {
        record("close");
        isUp = false;
    }

    platform::IconHandle icon;
    bool isUp = false;

private:
    void record(const std::string& call)
    {
        calls.push_back("lock " + std::to_string(number) + " " + call);
    }

    Calls& calls;
    int number;
};

} // namespace fakes
