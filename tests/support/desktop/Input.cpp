#include "desktop/Input.h"

#include "desktop/Failure.h"

#include <cstddef>
#include <string>

#include <xcb/xtest.h>

namespace desktop {

Input::Input(XConnection& connection) : connection(connection) {}

void Input::type(std::string_view text)
{
    for (const char character : text) {
        press(static_cast<unsigned char>(character));
    }
}

void Input::press(std::uint32_t keySymbol, const std::vector<std::uint32_t>& held)
{
    const Key key = keyOf(keySymbol);
    std::vector<xcb_keycode_t> modifiers;
    modifiers.reserve(held.size() + 1);
    for (const std::uint32_t symbol : held) {
        modifiers.push_back(keyOf(symbol).code);
    }
    if (key.shifted) {
        modifiers.push_back(keyOf(KEY_SHIFT).code);
    }
    for (const xcb_keycode_t code : modifiers) {
        send(XCB_KEY_PRESS, code);
    }
    send(XCB_KEY_PRESS, key.code);
    send(XCB_KEY_RELEASE, key.code);
    for (const xcb_keycode_t code : modifiers) {
        send(XCB_KEY_RELEASE, code);
    }
    connection.sync();
}

void Input::hold(std::uint32_t keySymbol)
{
    send(XCB_KEY_PRESS, keyOf(keySymbol).code);
    connection.sync();
}

void Input::release(std::uint32_t keySymbol)
{
    send(XCB_KEY_RELEASE, keyOf(keySymbol).code);
    connection.sync();
}

void Input::movePointer(std::int16_t x, std::int16_t y)
{
    xcb_test_fake_input(
        connection.get(), XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME, connection.root(), x, y, 0
    );
    connection.sync();
}

void Input::holdButton(std::uint8_t button)
{
    send(XCB_BUTTON_PRESS, button);
    connection.sync();
}

void Input::releaseButton(std::uint8_t button)
{
    send(XCB_BUTTON_RELEASE, button);
    connection.sync();
}

void Input::click(std::int16_t x, std::int16_t y, std::uint8_t button)
{
    movePointer(x, y);
    send(XCB_BUTTON_PRESS, button);
    send(XCB_BUTTON_RELEASE, button);
    connection.sync();
}

Input::Key Input::keyOf(std::uint32_t keySymbol)
{
    const xcb_setup_t* setup = xcb_get_setup(connection.get());
    const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const Reply<xcb_get_keyboard_mapping_reply_t> mapping(xcb_get_keyboard_mapping_reply(
        connection.get(),
        xcb_get_keyboard_mapping(connection.get(), setup->min_keycode, count),
        nullptr
    ));
    for (int code = 0; mapping && code < count; ++code) {
        const xcb_keysym_t* symbols = xcb_get_keyboard_mapping_keysyms(mapping.get()) +
                                      std::ptrdiff_t{code} * mapping->keysyms_per_keycode;
        const bool shifted = symbols[0] != keySymbol;
        if (!shifted || symbols[1] == keySymbol) {
            return {static_cast<xcb_keycode_t>(setup->min_keycode + code), shifted};
        }
    }
    throw Failure("the keyboard has no key for symbol " + std::to_string(keySymbol));
}

void Input::send(std::uint8_t type, std::uint8_t detail)
{
    xcb_test_fake_input(
        connection.get(), type, detail, XCB_CURRENT_TIME, connection.root(), 0, 0, 0
    );
}

} // namespace desktop
