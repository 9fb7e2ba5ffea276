#include "linux/x11/X11KeyboardStatus.h"

#include "linux/x11/Xkb.h"
#include "platform/Call.h"

#include <sstream>
#include <utility>

namespace x11 {

namespace {

std::vector<std::string> split(const std::string& text, char separator)
{
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, separator);) {
        parts.push_back(part);
    }
    return parts;
}

} // namespace

X11KeyboardStatus::X11KeyboardStatus(X11Desktop& desktop)
    : desktop(desktop),
      subscription(desktop.subscribe([this](const xcb_generic_event_t& event) { handle(event); }))
{
    readLayouts();
    readState();
}

std::string X11KeyboardStatus::layoutName()
{
    return group < layouts.size() ? layouts[group] : std::string();
}

void X11KeyboardStatus::nextLayout()
{
    const Connection& connection = desktop.connection();
    if (!connection.extensions().xkb || !hasSeveralLayouts()) {
        return;
    }
    const std::size_t next = (group + 1) % layouts.size();
    xcb_xkb_latch_lock_state(
        connection.get(),
        XCB_XKB_ID_USE_CORE_KBD,
        0,
        0,
        1, // the group is what is locked
        static_cast<std::uint8_t>(next),
        0,
        0,
        0
    );
    connection.flush();
}

void X11KeyboardStatus::observe(std::function<void()> newHandler)
{
    handler = std::move(newHandler);
}

void X11KeyboardStatus::handle(const xcb_generic_event_t& event)
{
    const Extensions& extensions = desktop.connection().extensions();
    if (extensions.xkb && typeOf(event) == extensions.xkbEvent) {
        handleKeyboardEvent(event);
    } else if (typeOf(event) == XCB_PROPERTY_NOTIFY &&
               as<xcb_property_notify_event_t>(event).atom == desktop.atoms().xkbRulesNames) {
        const std::vector<std::string> before = layouts;
        readLayouts();
        if (layouts != before) {
            notify();
        }
    }
}

void X11KeyboardStatus::handleKeyboardEvent(const xcb_generic_event_t& event)
{
    const auto& state = as<xcb_xkb_state_notify_event_t>(event);
    if (state.xkbType == XCB_XKB_STATE_NOTIFY) {
        set((state.lockedMods & XCB_MOD_MASK_LOCK) != 0, state.group);
    } else {
        readState();
    }
}

void X11KeyboardStatus::readState()
{
    const Connection& connection = desktop.connection();
    if (!connection.extensions().xkb) {
        return;
    }
    const Reply<xcb_xkb_get_state_reply_t> state(xcb_xkb_get_state_reply(
        connection.get(), xcb_xkb_get_state(connection.get(), XCB_XKB_ID_USE_CORE_KBD), nullptr
    ));
    if (state) {
        set((state->lockedMods & XCB_MOD_MASK_LOCK) != 0, state->group);
    }
}

void X11KeyboardStatus::readLayouts()
{
    constexpr std::uint32_t LONGEST = 1024; // 32-bit units
    constexpr std::size_t LAYOUT_FIELD = 2; // after rules and model
    const Connection& connection = desktop.connection();
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        connection.get(),
        xcb_get_property(
            connection.get(),
            0,
            connection.root(),
            desktop.atoms().xkbRulesNames,
            XCB_ATOM_STRING,
            0,
            LONGEST
        ),
        nullptr
    ));
    layouts.clear();
    if (!reply) {
        return;
    }
    const std::string names(
        static_cast<const char*>(xcb_get_property_value(reply.get())),
        static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))
    );
    const std::vector<std::string> fields = split(names, '\0');
    if (fields.size() > LAYOUT_FIELD) {
        layouts = split(fields[LAYOUT_FIELD], ',');
    }
}

void X11KeyboardStatus::set(bool capsLockIsOn, std::size_t activeGroup)
{
    const bool capsLockBefore = std::exchange(capsLock, capsLockIsOn);
    const std::size_t groupBefore = std::exchange(group, activeGroup);
    if (capsLockBefore != capsLock || groupBefore != group) {
        notify();
    }
}

void X11KeyboardStatus::notify() const
{
    platform::call(handler);
}

} // namespace x11
