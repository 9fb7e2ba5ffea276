#include "linux/x11/Keymap.h"

#include <algorithm>
#include <span>

namespace x11 {

namespace {

constexpr std::uint32_t META_LEFT = 0xffe7;
constexpr std::uint32_t META_RIGHT = 0xffe8;
constexpr std::uint32_t ALT_LEFT = 0xffe9;
constexpr std::uint32_t ALT_RIGHT = 0xffea;
constexpr std::uint32_t SUPER_LEFT = 0xffeb;
constexpr std::uint32_t SUPER_RIGHT = 0xffec;

class KeyboardMapping
{
public:
    explicit KeyboardMapping(const Connection& connection)
        : first(xcb_get_setup(connection.get())->min_keycode)
    {
        const xcb_keycode_t last = xcb_get_setup(connection.get())->max_keycode;
        reply.reset(xcb_get_keyboard_mapping_reply(
            connection.get(),
            xcb_get_keyboard_mapping(
                connection.get(), first, static_cast<std::uint8_t>(last - first + 1)
            ),
            nullptr
        ));
    }

    std::size_t count() const
    {
        return reply && reply->keysyms_per_keycode != 0
                   ? static_cast<std::size_t>(xcb_get_keyboard_mapping_keysyms_length(reply.get())
                     ) / reply->keysyms_per_keycode
                   : 0;
    }

    /// Symbols of the key of that place in the mapping.
    std::span<const xcb_keysym_t> symbols(std::size_t place) const
    {
        const std::size_t width = reply->keysyms_per_keycode;
        return {xcb_get_keyboard_mapping_keysyms(reply.get()) + place * width, width};
    }

    std::span<const xcb_keysym_t> symbolsOf(xcb_keycode_t key) const
    {
        const bool known = key >= first && key - first < static_cast<int>(count());
        return known ? symbols(static_cast<std::size_t>(key - first))
                     : std::span<const xcb_keysym_t>();
    }

    xcb_keycode_t keyAt(std::size_t place) const
    {
        return static_cast<xcb_keycode_t>(first + place);
    }

private:
    xcb_keycode_t first;
    Reply<xcb_get_keyboard_mapping_reply_t> reply;
};

bool makesAnyOf(std::span<const xcb_keysym_t> symbols, std::initializer_list<std::uint32_t> wanted)
{
    return std::find_first_of(symbols.begin(), symbols.end(), wanted.begin(), wanted.end()) !=
           symbols.end();
}

} // namespace

std::optional<xcb_keycode_t> findKey(const Connection& connection, std::uint32_t keysym)
{
    const KeyboardMapping mapping(connection);
    for (std::size_t place = 0; place < mapping.count(); ++place) {
        if (mapping.symbols(place).front() == keysym) {
            return mapping.keyAt(place);
        }
    }
    return std::nullopt;
}

ModifierBits queryModifierBits(const Connection& connection)
{
    ModifierBits bits;
    const KeyboardMapping mapping(connection);
    const Reply<xcb_get_modifier_mapping_reply_t> modifiers(xcb_get_modifier_mapping_reply(
        connection.get(), xcb_get_modifier_mapping(connection.get()), nullptr
    ));
    if (!modifiers) {
        return bits;
    }
    const std::span<const xcb_keycode_t> keys(
        xcb_get_modifier_mapping_keycodes(modifiers.get()),
        static_cast<std::size_t>(xcb_get_modifier_mapping_keycodes_length(modifiers.get()))
    );
    for (std::size_t index = 0; index < keys.size(); ++index) {
        const auto modifier = static_cast<unsigned>(index / modifiers->keycodes_per_modifier);
        const auto bit = static_cast<std::uint8_t>(1U << modifier);
        const auto symbols = mapping.symbolsOf(keys[index]);
        if (bit < XCB_MOD_MASK_1) {
            continue; // Shift, Lock and Control are what they are
        }
        if (makesAnyOf(symbols, {ALT_LEFT, ALT_RIGHT, META_LEFT, META_RIGHT})) {
            bits.alt |= bit;
        }
        if (makesAnyOf(symbols, {SUPER_LEFT, SUPER_RIGHT})) {
            bits.super |= bit;
        }
    }
    return bits;
}

} // namespace x11
