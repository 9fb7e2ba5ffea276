// A weak reference to a control of a form. Using one that the form lacks stops the process.
#pragma once

#include "platform/Fatal.h"

#include <QPointer>

namespace ui {

template <typename Control> class Outlet
{
public:
    Outlet() = default;

    // NOLINTNEXTLINE(google-explicit-constructor): an outlet is set from the control
    Outlet(Control* control) : control(control) {}

    /// The control, or nothing while the form is not loaded.
    Control* get() const { return control.data(); }

    explicit operator bool() const { return !control.isNull(); }

    Control* operator->() const { return &required(); }

    Control& operator*() const { return required(); }

private:
    Control& required() const
    {
        Control* const found = control.data();
        if (found == nullptr) {
            platform::fatal("an outlet is not connected");
        }
        return *found;
    }

    QPointer<Control> control;
};

} // namespace ui
