// Somebody who uses the agent's windows: looks for things as they are shown to assistive tools, and
// uses them with the pointer, with keys or as assistive tools do. Whatever is not there within
// reasonable time ends in a `desktop::Failure` that says what is there instead. One thread.
#pragma once

#include "accessibility/AccessibilityBus.h"
#include "accessibility/FocusWatch.h"
#include "accessibility/Node.h"
#include "accessibility/TextWatch.h"
#include "desktop/Desktop.h"
#include "person/Control.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace person {

class Person
{
public:
    /// Must be there before the agent starts.
    explicit Person(desktop::Desktop& desk) : desk(desk), tools(desk), keyboard(tools.address()) {}

    /// What the screen shows now; nothing where no such thing is to be seen.
    [[nodiscard]] std::optional<accessibility::Node> glimpse(const Control& control) const;

    [[nodiscard]] bool sees(const Control& control) const { return glimpse(control).has_value(); }

    /// Waits for it.
    accessibility::Node find(const Control& control) const;
    void waitFor(const Control& control) const;
    void waitForEndOf(const Control& control) const;
    void waitUntil(const std::string& what, const std::function<bool()>& condition) const;

    /// As a screen reader does it: the thing's own action.
    void activate(const Control& control) const;

    /// Waits until the window has the keyboard, which the field then has in it.
    void focus(const Control& control) const;

    /// With the pointer, in the middle of it, once it stays where it is.
    void click(const Control& control) const;
    void clickAt(const desktop::Rectangle& place, std::uint8_t button = 1) const;

    /// On the button that a row has at its end.
    void clickAtEndOf(const Control& row) const;

    /// Where a thing is once it stays where it is.
    desktop::Rectangle placeOf(const Control& control) const;

    /// Types over what is in the field, and waits until the field has it: keys and what assistive
    /// tools ask for come by different ways.
    void write(const std::string& text, const Control& field) const;
    void type(const std::string& text) const;
    void press(std::uint32_t key, const std::vector<std::uint32_t>& held = {}) const;

    /// What has the keyboard, the list where it is a row; nothing where none of the agent's windows
    /// has it.
    [[nodiscard]] std::optional<accessibility::Node> focused() const;
    [[nodiscard]] bool hasFocus(const Control& control) const;

    /// Goes through the menu that is open until this entry has the keyboard.
    void goTo(const Control& menuItem) const;

    /// The entries of the menu that has just been opened, whichever program shows it; the first one
    /// has the keyboard then.
    [[nodiscard]] std::vector<accessibility::Node> entriesOfMenu() const;

    /// Waits until this has the keyboard.
    void waitForFocusOn(const Control& control) const;

    /// Waits until keys go to the agent's window of this title.
    void waitForKeysTo(const std::string& window) const;

    /// Names of all rows of lists that show, in order.
    std::vector<std::string> rows() const;

    /// Names of all that assistive tools can find in the agent, things that do not show included.
    [[nodiscard]] std::vector<std::string> everyName() const;

    /// The menu that is open.
    [[nodiscard]] std::optional<desktop::Rectangle> placeOfMenu() const;

    /// Waits until nothing on the screen has changed for a moment, a blinking caret aside.
    void waitUntilScreenRests() const;

    /// What fields tell assistive tools of their texts, of programs that start from here on.
    [[nodiscard]] accessibility::TextWatch listenToTexts() const
    {
        return accessibility::TextWatch(tools.address());
    }

    /// For a person who looks for the cause of a failure: all that shows.
    std::string report() const;

private:
    std::vector<accessibility::Node> windows() const;
    bool keysGoToAgent() const;

    desktop::Desktop& desk;
    accessibility::AccessibilityBus tools;
    mutable accessibility::FocusWatch keyboard;
};

} // namespace person
