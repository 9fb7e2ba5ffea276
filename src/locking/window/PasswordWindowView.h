// What is seen of the lock: the window from the form "PasswordWindow", laid out for the screen that
// it fills. Main thread only. It reports nothing of its own; its owner listens to the outlets.
#pragma once

#include "locking/window/PasswordWindowStyle.h"
#include "platform/Geometry.h"
#include "platform/Icon.h"
#include "toolkit/BounceAnimation.h"

#include <memory>
#include <optional>
#include <string>

namespace locking {

class BorderlessKeyWindow;

class PasswordWindowView
{
public:
    /// Loads the form. Nothing is laid out before `place`.
    PasswordWindowView();
    ~PasswordWindowView();
    PasswordWindowView(const PasswordWindowView&) = delete;
    PasswordWindowView& operator=(const PasswordWindowView&) = delete;
    PasswordWindowView(PasswordWindowView&&) = delete;
    PasswordWindowView& operator=(PasswordWindowView&&) = delete;

    /// Fills that frame of the desktop, and is laid out for it.
    void place(const platform::Rect& frame);

    void clear();
    void showMessage(const std::string& message, const platform::IconHandle& icon);
    void showKeyboardStatus();
    void showError(const std::string& message);

    /// Draws everything once, at whatever size, where nobody sees it.
    void drawUnseen();

    BorderlessKeyWindow& window() { return *loadedWindow; }

    const std::unique_ptr<Ui::PasswordWindow> outlets;

private:
    /// A window may still be in the middle of an event of its own when its owner lets go of it.
    struct DeleteLater
    {
        void operator()(BorderlessKeyWindow* window) const;
    };

    void layOut();

    std::unique_ptr<BorderlessKeyWindow, DeleteLater> loadedWindow;
    std::unique_ptr<toolkit::BounceAnimation> bounce;
    std::optional<PasswordWindowStyle> style;
};

} // namespace locking
