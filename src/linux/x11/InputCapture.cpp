#include "linux/x11/InputCapture.h"

#include "linux/x11/Keymap.h"

#include <array>
#include <string>
#include <utility>

#include <xcb/xtest.h>

namespace x11 {

InputCapture::InputCapture(const Connection& connection, platform::Report report)
    : connection(connection),
      report(std::move(report))
{
    if (!connection.extensions().xinput) {
        return;
    }

    const struct
    {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } hierarchy{{XCB_INPUT_DEVICE_ALL, 1}, XCB_INPUT_XI_EVENT_MASK_HIERARCHY};

    xcb_input_xi_select_events(connection.get(), connection.root(), 1, &hierarchy.head);
}

void InputCapture::begin(Clock::time_point now)
{
    if (active) {
        return;
    }
    active = true;
    wasMissing = false;
    reportedMissing = false;
    missingSince = now;
    findDevices();
    attempt(now);
}

void InputCapture::end()
{
    if (!active) {
        return;
    }
    active = false;
    keyboardsHeld = false;
    pointersHeld = false;
    for (const Device& device : devices) {
        xcb_input_xi_ungrab_device(connection.get(), XCB_CURRENT_TIME, device.identifier);
    }
    connection.flush();
}

std::optional<InputCapture::Clock::time_point> InputCapture::due() const
{
    return active ? std::optional(nextAttempt) : std::nullopt;
}

void InputCapture::attempt(Clock::time_point now)
{
    lastAttempt = now;
    grabAll();
    noteResult(now);
    reportResult(now);
}

void InputCapture::devicesChanged()
{
    if (active) {
        findDevices();
        attempt();
    }
}

void InputCapture::hint()
{
    nextAttempt = std::min(nextAttempt, lastAttempt + AFTER_HINT);
}

void InputCapture::findDevices()
{
    devices.clear();
    if (!connection.extensions().xinput) {
        return;
    }
    const Reply<xcb_input_xi_query_device_reply_t> reply(xcb_input_xi_query_device_reply(
        connection.get(),
        xcb_input_xi_query_device(connection.get(), XCB_INPUT_DEVICE_ALL_MASTER),
        nullptr
    ));
    if (!reply) {
        return;
    }
    auto infos = xcb_input_xi_query_device_infos_iterator(reply.get());
    for (; infos.rem > 0; xcb_input_xi_device_info_next(&infos)) {
        devices.push_back(
            {infos.data->deviceid, infos.data->type == XCB_INPUT_DEVICE_TYPE_MASTER_KEYBOARD}
        );
    }
}

void InputCapture::grabAll()
{
    std::vector<xcb_input_xi_grab_device_cookie_t> cookies;
    cookies.reserve(devices.size());
    for (const Device& device : devices) {
        const std::uint32_t mask =
            device.keyboard
                ? XCB_INPUT_XI_EVENT_MASK_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_KEY_RELEASE
                : XCB_INPUT_XI_EVENT_MASK_BUTTON_PRESS | XCB_INPUT_XI_EVENT_MASK_BUTTON_RELEASE;
        // The root can always be seen, so that no window's end takes the grab away.
        cookies.push_back(xcb_input_xi_grab_device(
            connection.get(),
            connection.root(),
            XCB_CURRENT_TIME,
            XCB_NONE,
            device.identifier,
            XCB_INPUT_GRAB_MODE_22_ASYNC,
            XCB_INPUT_GRAB_MODE_22_ASYNC,
            XCB_INPUT_GRAB_OWNER_NO_OWNER,
            1,
            &mask
        ));
    }
    keyboardsHeld = !devices.empty();
    pointersHeld = !devices.empty();
    for (std::size_t index = 0; index < devices.size(); ++index) {
        const Reply<xcb_input_xi_grab_device_reply_t> reply(
            xcb_input_xi_grab_device_reply(connection.get(), cookies[index], nullptr)
        );
        const bool held = reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
        bool& all = devices[index].keyboard ? keyboardsHeld : pointersHeld;
        all = all && held;
    }
}

void InputCapture::noteResult(Clock::time_point now)
{
    const bool keyboardLost = std::exchange(keyboardsWereHeld, keyboardsHeld) && !keyboardsHeld;
    if (complete()) {
        wasMissing = false;
        nextAttempt = now + CONFIRMATION;
        return;
    }
    const bool missedAnew = !std::exchange(wasMissing, true);
    if (missedAnew) {
        missingSince = now;
    }
    if (missedAnew || keyboardLost) {
        nextEscape = now + BEFORE_ESCAPE;
        hasteUntil = now + HASTE;
        escapes = 0;
    }
    // Who holds the pointer alone would not hear of it: the keyboard is held here by then.
    const bool mayAsk = escapes < MOST_ESCAPES && now >= nextEscape;
    if (!devices.empty() && !keyboardsHeld && mayAsk) {
        askToLetGo(now);
    }
    nextAttempt = now + (now < hasteUntil ? IN_HASTE : RETRY);
}

void InputCapture::askToLetGo(Clock::time_point now)
{
    pressEscape();
    ++escapes;
    nextEscape = now;
    if (escapes < EARLY_ESCAPES) {
        nextEscape += BETWEEN_ESCAPES;
    } else {
        nextEscape += BETWEEN_LATER_ESCAPES;
    }
    hasteUntil = now + HASTE;
}

void InputCapture::reportResult(Clock::time_point now)
{
    if (complete()) {
        if (std::exchange(reportedMissing, false)) {
            report("keyboard and pointer are captured now");
        }
        return;
    }
    if (reportedMissing || now - missingSince < PATIENCE) {
        return;
    }
    reportedMissing = true;
    if (devices.empty()) {
        report("keyboard and pointer cannot be captured on this display; the screens stay covered");
    } else {
        report(
            std::string(keyboardsHeld ? "the pointer" : "the keyboard") +
            " is held by another program and not captured yet; trying on"
        );
    }
}

void InputCapture::pressEscape() const
{
    constexpr std::uint32_t ESCAPE = 0xff1b;
    const std::optional<xcb_keycode_t> key = findKey(connection, ESCAPE);
    if (!connection.extensions().xtest || !key.has_value()) {
        return;
    }
    constexpr std::array<std::uint8_t, 2> PRESS_AND_RELEASE{XCB_KEY_PRESS, XCB_KEY_RELEASE};
    for (const std::uint8_t type : PRESS_AND_RELEASE) {
        xcb_test_fake_input(connection.get(), type, *key, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    }
    connection.flush();
}

} // namespace x11
