// A window of one colour that lies over everything while it is in front. Main thread.
#pragma once

#include "linux/x11/X11Guard.h"
#include "platform/Windows.h"

namespace x11 {

class CoverWindow final : public platform::PlainWindow
{
public:
    CoverWindow(X11Guard& guard, const platform::WindowAttributes& attributes);
    ~CoverWindow() override;
    CoverWindow(const CoverWindow&) = delete;
    CoverWindow& operator=(const CoverWindow&) = delete;
    CoverWindow(CoverWindow&&) = delete;
    CoverWindow& operator=(CoverWindow&&) = delete;

    void makeKeyAndOrderFront() override;
    void close() override;

private:
    X11Guard& guard;
    xcb_window_t window;
    int level;
};

} // namespace x11
