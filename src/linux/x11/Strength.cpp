#include "linux/x11/Strength.h"

#include <string_view>
#include <utility>

namespace x11 {

std::string strength(const Extensions& extensions)
{
    std::string text =
        extensions.xinput ? "protection on X11: screens are covered, keyboard and pointer captured;"
                            " programs that listen to raw input can still see keys"
                          : "protection on X11: screens are covered, but keyboard and pointer"
                            " cannot be captured, and keys reach other programs";
    const std::pair<bool, std::string_view> parts[] = {
        {extensions.xinput, "XInput 2 (captures keyboard and pointer)"},
        {extensions.xtest, "XTEST (closes open menus)"},
        {extensions.randr, "RandR 1.5 (tells the screens apart)"},
        {extensions.res, "X-Resource 1.2 (tells whose a window is)"},
        {extensions.xkb, "XKB (tells modifier keys and layouts)"},
    };
    std::string_view separator = "; missing: ";
    for (const auto& [present, name] : parts) {
        if (!present) {
            text.append(separator).append(name);
            separator = ", ";
        }
    }
    return text;
}

} // namespace x11
