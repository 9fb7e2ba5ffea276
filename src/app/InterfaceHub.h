// The user interface as the delegate starts it: everything with a window hangs below it.
#pragma once

namespace app {

class InterfaceHub
{
public:
    InterfaceHub() = default;
    InterfaceHub(const InterfaceHub&) = delete;
    InterfaceHub& operator=(const InterfaceHub&) = delete;
    InterfaceHub(InterfaceHub&&) = delete;
    InterfaceHub& operator=(InterfaceHub&&) = delete;
    virtual ~InterfaceHub() = default;

    /// Puts the interface up.
    virtual void present() = 0;

    /// Opens the popover.
    virtual void showPopover() = 0;
};

} // namespace app
