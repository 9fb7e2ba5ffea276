#include "linux/x11/Strength.h"

#include <array>
#include <string_view>
#include <utility>

namespace x11 {

namespace {

std::string promise(const Extensions& extensions, Session session)
{
    if (session == Session::Wayland) {
        return "protection in a Wayland session: only programs that use X11 are covered"
               " and their input captured;"
               " choose an X11 session where you log in to have all of them protected";
    }
    return extensions.xinput
               ? "protection on X11: screens are covered, keyboard and pointer captured;"
                 " programs that listen to raw input can still see keys"
               : "protection on X11: screens are covered, but keyboard and pointer"
                 " cannot be captured, and keys reach other programs";
}

} // namespace

std::string strength(const Extensions& extensions, Session session)
{
    std::string text = promise(extensions, session);
    using Part = std::pair<bool, std::string_view>;
    const std::array parts{
        Part{extensions.xinput, "XInput 2 (captures keyboard and pointer)"},
        Part{extensions.xtest, "XTEST (closes open menus)"},
        Part{extensions.randr, "RandR 1.5 (tells the screens apart)"},
        Part{extensions.res, "X-Resource 1.2 (tells whose a window is)"},
        Part{extensions.xkb, "XKB (tells modifier keys and layouts)"},
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
