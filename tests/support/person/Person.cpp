#include "person/Person.h"

#include "accessibility/Search.h"
#include "desktop/Failure.h"
#include "desktop/Pixels.h"
#include "desktop/Wait.h"

#include <algorithm>
#include <chrono>

namespace person {

using accessibility::Node;
using accessibility::Role;
using accessibility::State;
using desktop::Rectangle;

namespace {

constexpr std::chrono::seconds PATIENCE{20};
constexpr auto PROGRAM = "Tarvel";

std::string inWords(std::optional<Role> role)
{
    if (!role) {
        return "window";
    }
    switch (*role) {
    case Role::CheckBox:
        return "check box";
    case Role::Label:
        return "label";
    case Role::List:
        return "list";
    case Role::ListItem:
        return "row";
    case Role::MenuItem:
        return "menu item";
    case Role::PasswordText:
        return "password field";
    case Role::PushButton:
        return "button";
    case Role::Text:
        return "field";
    }
    return "thing";
}

std::string inWords(const Control& control)
{
    return inWords(control.role) + " \"" + control.name + "\"" +
           (control.window.empty() ? "" : " in \"" + control.window + "\"");
}

std::string nameOf(const Node& node)
{
    try {
        return node.name();
    } catch (const desktop::Failure&) {
        return {}; // it went away
    }
}

} // namespace

std::vector<Node> Person::windows() const
{
    std::vector<Node> found;
    for (const Node& program : tools.programs()) {
        if (nameOf(program) == PROGRAM) {
            const std::vector<Node> own = program.children();
            found.insert(found.end(), own.begin(), own.end());
        }
    }
    return found;
}

std::optional<Node> Person::glimpse(const Control& control) const
{
    try {
        for (const Node& window : windows()) {
            if (!window.is(State::Showing) ||
                (!control.window.empty() && window.name() != control.window)) {
                continue;
            }
            if (!control.role) {
                return window;
            }
            if (auto found = accessibility::find(window, {*control.role, control.name})) {
                return found;
            }
        }
    } catch (const desktop::Failure&) {
        return std::nullopt; // the program ends, or a window just went
    }
    return std::nullopt;
}

void Person::waitUntil(const std::string& what, const std::function<bool()>& condition) const
{
    const auto holds = [&condition] {
        try {
            return condition();
        } catch (const desktop::Failure&) {
            return false; // what was looked at went away meanwhile
        }
    };
    if (!desktop::waitUntil(holds, PATIENCE, std::chrono::milliseconds(20))) {
        throw desktop::Failure("not so: " + what + "\nThere is:\n" + report());
    }
}

Node Person::find(const Control& control) const
{
    std::optional<Node> found;
    waitUntil("there is " + inWords(control), [&] {
        found = glimpse(control);
        return found.has_value();
    });
    return *found;
}

void Person::waitFor(const Control& control) const
{
    static_cast<void>(find(control));
}

void Person::waitForEndOf(const Control& control) const
{
    waitUntil(inWords(control) + " is gone", [&] { return !sees(control); });
}

void Person::activate(const Control& control) const
{
    find(control).act();
}

void Person::focus(const Control& control) const
{
    const Node node = find(control);
    waitUntil(inWords(control) + " takes the keyboard", [&node] { return node.takeFocus(); });
    waitForFocusOn(control);
}

void Person::waitForFocusOn(const Control& control) const
{
    waitUntil(inWords(control) + " has the keyboard", [&] { return hasFocus(control); });
}

void Person::waitForKeysTo(const std::string& window) const
{
    waitUntil("\"" + window + "\" has the keyboard", [&] {
        return keysGoToAgent() && desk.windows().ofTitle(window) == desk.windows().focused();
    });
}

bool Person::hasFocus(const Control& control) const
{
    const auto node = glimpse(control);
    return node && node->is(State::Focused) && keysGoToAgent();
}

std::optional<Node> Person::focused() const
{
    if (!keysGoToAgent()) {
        return std::nullopt;
    }
    std::vector<Node> found;
    for (const Node& window : windows()) {
        // A list's current row says so of itself even when the list has not got the keyboard.
        const auto inIt = accessibility::findAll(window, [](const Node& node) {
            return node.is(State::Focused) && !node.is(Role::ListItem);
        });
        found.insert(found.end(), inIt.begin(), inIt.end());
    }
    return found.empty() ? std::nullopt : std::optional(found.back());
}

/// The toolkit says what has its focus a moment before keys that are typed go there.
bool Person::keysGoToAgent() const
{
    const xcb_window_t window = desk.windows().focused();
    return window > XCB_INPUT_FOCUS_POINTER_ROOT && window != desk.connection().root() &&
           window == desk.windows().active();
}

Rectangle Person::placeOf(const Control& control) const
{
    std::optional<Rectangle> last;
    waitUntil(inWords(control) + " stays where it is", [&] {
        const auto node = glimpse(control);
        const auto place = node ? std::optional(node->place()) : std::nullopt;
        const bool stays = place && place == last;
        last = place;
        return stays;
    });
    return *last;
}

void Person::click(const Control& control) const
{
    clickAt(placeOf(control));
}

void Person::clickAt(const Rectangle& place, std::uint8_t button) const
{
    desk.input().click(
        static_cast<std::int16_t>(place.x + place.width / 2),
        static_cast<std::int16_t>(place.y + place.height / 2),
        button
    );
}

void Person::clickAtEndOf(const Control& row) const
{
    constexpr std::uint16_t BUTTON = 48;
    Rectangle place = placeOf(row);
    place.x = static_cast<std::int16_t>(place.x + place.width - BUTTON);
    place.width = BUTTON;
    clickAt(place);
}

void Person::write(const std::string& text, const Control& field) const
{
    focus(field);
    press('a', {desktop::KEY_CONTROL});
    press(desktop::KEY_BACKSPACE);
    type(text);
    waitUntil(inWords(field) + " holds what was typed", [&] {
        return find(field).characters() == text.size();
    });
}

void Person::type(const std::string& text) const
{
    desk.input().type(text);
}

void Person::press(std::uint32_t key, const std::vector<std::uint32_t>& held) const
{
    desk.input().press(key, held);
}

void Person::goTo(const Control& menuItem) const
{
    constexpr int MOST = 20;
    waitUntil("a menu is open", [this] { return placeOfMenu().has_value(); });
    for (int steps = 0; steps < MOST; ++steps) {
        const auto before = keyboard.last();
        press(desktop::KEY_DOWN);
        waitUntil("the menu goes on", [&] { return keyboard.last() != before; });
        const auto entry = keyboard.last();
        if (entry->is(*menuItem.role) && entry->name() == menuItem.name) {
            return;
        }
    }
    throw desktop::Failure("the menu does not lead to " + inWords(menuItem));
}

std::vector<Node> Person::entriesOfMenu() const
{
    const auto before = keyboard.last();
    press(desktop::KEY_DOWN);
    waitUntil("a menu takes the keyboard", [&] {
        const auto now = keyboard.last();
        return now && now != before && now->is(Role::MenuItem);
    });
    return keyboard.last()->parent().children();
}

/// Menus are windows of the agent that no window manager has put into a frame.
std::optional<Rectangle> Person::placeOfMenu() const
{
    desktop::WindowList& list = desk.windows();
    for (const xcb_window_t window : list.viewableTopLevels()) {
        if (list.classOf(window) == PROGRAM) {
            return list.placeOf(window);
        }
    }
    return std::nullopt;
}

void Person::waitUntilScreenRests() const
{
    constexpr std::size_t CARET = 200; // pixels
    constexpr std::chrono::milliseconds MOMENT{250};
    const Rectangle screen = desk.server().screens().front();
    waitUntil("the screen rests", [&] {
        const auto before = desktop::capture(desk.connection(), screen);
        return desktop::holdsFor(
            [&] {
                return desktop::capture(desk.connection(), screen).countDifferent(before) <= CARET;
            },
            MOMENT
        );
    });
}

std::vector<std::string> Person::rows() const
{
    std::vector<std::string> names;
    for (const Node& window : windows()) {
        const auto found = accessibility::findAll(window, [](const Node& node) {
            return node.is(Role::ListItem);
        });
        for (const Node& row : found) {
            names.push_back(nameOf(row));
        }
    }
    return names;
}

std::vector<std::string> Person::everyName() const
{
    std::vector<std::string> names;
    std::vector<Node> open = windows();
    while (!open.empty()) {
        const Node node = open.back();
        open.pop_back();
        names.push_back(node.name());
        const std::vector<Node> children = node.children();
        open.insert(open.end(), children.begin(), children.end());
    }
    return names;
}

std::string Person::report() const
{
    std::string text;
    for (const Node& program : tools.programs()) {
        text += accessibility::describe(program);
    }
    return text;
}

} // namespace person
