// A line of text that says how its editing ended. Masked (echo mode "Password"), it gives nothing
// of the text away to the clipboard, to input methods or to assistive tools. Main
// thread only.
#pragma once

#include "toolkit/EditingField.h"

#include <functional>
#include <string>

namespace ui {

class TextField : public toolkit::EditingField
{
    Q_OBJECT

public:
    explicit TextField(QWidget* parent = nullptr);

    std::string stringValue() const;
    void setStringValue(const std::string& value);

    /// The user changed the text.
    std::function<void()> onChange;

    /// Asked first at each key; true when the key was used.
    std::function<bool(const QKeyEvent& event)> onKeyDown;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
};

} // namespace ui
