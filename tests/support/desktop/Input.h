// Keys and clicks as a person's hands make them (XTEST): they reach whatever holds the focus or a
// grab. Knows the characters of the server's keyboard layout. One thread at a time.
#pragma once

#include "desktop/XConnection.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace desktop {

/// The usual numbers of X key symbols; printable ASCII is its own number.
inline constexpr std::uint32_t KEY_BACKSPACE = 0xFF08;
inline constexpr std::uint32_t KEY_TAB = 0xFF09;
inline constexpr std::uint32_t KEY_RETURN = 0xFF0D;
inline constexpr std::uint32_t KEY_ESCAPE = 0xFF1B;
inline constexpr std::uint32_t KEY_DOWN = 0xFF54;
inline constexpr std::uint32_t KEY_F4 = 0xFFC1;
inline constexpr std::uint32_t KEY_F10 = 0xFFC7;
inline constexpr std::uint32_t KEY_SHIFT = 0xFFE1;
inline constexpr std::uint32_t KEY_CONTROL = 0xFFE3;
inline constexpr std::uint32_t KEY_DELETE = 0xFFFF;
inline constexpr std::uint32_t KEY_CAPS_LOCK = 0xFFE5;
inline constexpr std::uint32_t KEY_ALT = 0xFFE9;
inline constexpr std::uint32_t KEY_SUPER = 0xFFEB;

class Input
{
public:
    explicit Input(XConnection& connection);

    /// Types printable ASCII; throws `Failure` for what the keyboard layout does not have.
    void type(std::string_view text);

    /// Presses and lets go a key while the others are held down.
    void press(std::uint32_t keySymbol, const std::vector<std::uint32_t>& held = {});

    void hold(std::uint32_t keySymbol);
    void release(std::uint32_t keySymbol);

    void movePointer(std::int16_t x, std::int16_t y);
    void holdButton(std::uint8_t button = 1);
    void releaseButton(std::uint8_t button = 1);

    void click(std::int16_t x, std::int16_t y, std::uint8_t button = 1);

private:
    struct Key
    {
        xcb_keycode_t code = 0;
        bool shifted = false;
    };

    Key keyOf(std::uint32_t keySymbol);
    void send(std::uint8_t type, std::uint8_t detail);

    XConnection& connection;
};

} // namespace desktop
