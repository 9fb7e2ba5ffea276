// The password window of one lock, as the central service uses it. Made anew for every lock; the
// next lock destroys it, torn down or not, and nothing calls it from then on. Main thread only.
#pragma once

#include "platform/Icon.h"
#include "platform/Port.h"

#include <functional>
#include <memory>
#include <string>

namespace locking {

class LockWindow : public platform::Port
{
public:
    /// Called with the text exactly as typed.
    std::function<void(const std::string& typed)> passwordEntered;

    /// Called when the Option key goes down.
    std::function<void()> specialKeyPressed;

    /// Takes over the session's presentation options, then shows the lock on the main screen.
    virtual void
    showServiceWindow(const std::string& message, const platform::IconHandle& appIcon) = 0;

    /// Brings the lock to the front again, later on the main queue.
    virtual void focus() = 0;

    /// The screens are arranged anew: moves the lock, with all that is typed, to the main one and
    /// above the covers, later on the main queue.
    virtual void screensChanged() = 0;

    /// Shows the text and bounces the central view, later on the main queue.
    virtual void displayErrorMessage(const std::string& message) = 0;

    /// Stops observing the workspace and the keyboard. Again: nothing more.
    virtual void teardown() = 0;

    /// Closes the window, then the controller; what was posted to show it is dropped, so that a
    /// lifted lock never comes back. Again: nothing more.
    virtual void close() = 0;
};

using LockWindowFactory = std::function<std::unique_ptr<LockWindow>()>;

} // namespace locking
