#include "session/agent/InterfaceTest.h"

#include "desktop/Pixels.h"

namespace agent {

namespace {

constexpr desktop::Pixel STRIP = 0x969696;
constexpr std::int16_t INSIDE = 12; // of the window's margin

} // namespace

bool InterfaceTest::getsKeys(const std::string& title) const
{
    return desktop::waitUntil(
        [&] {
            desktop::WindowList& windows = session->desk.windows();
            const xcb_window_t window = windows.ofTitle(title);
            return window != 0 && windows.isViewable(window) && windows.active() == window &&
                   windows.focused() == window;
        },
        PATIENCE
    );
}

bool InterfaceTest::goes(const std::string& title) const
{
    return desktop::waitUntil(
        [&] { return session->desk.windows().ofTitle(title) == 0; }, PATIENCE
    );
}

bool InterfaceTest::turnTo(const std::string& title) const
{
    const bool isThere = desktop::waitUntil(
        [&] {
            const xcb_window_t window = session->desk.windows().ofTitle(title);
            return window != 0 && session->desk.windows().isViewable(window);
        },
        PATIENCE
    );
    if (!isThere) {
        return false;
    }
    const auto place = session->desk.windows().placeOf(session->desk.windows().ofTitle(title));
    session->desk.input().click(
        static_cast<std::int16_t>(place.x + INSIDE), static_cast<std::int16_t>(place.y + INSIDE)
    );
    return getsKeys(title);
}

void InterfaceTest::press(std::uint32_t keySymbol, const std::vector<std::uint32_t>& held) const
{
    session->desk.input().press(keySymbol, held);
}

void InterfaceTest::choosePassword(const std::string& password, const std::string& confirmation)
    const
{
    session->desk.input().type(password);
    press(desktop::KEY_TAB);
    session->desk.input().type(confirmation);
    press(desktop::KEY_RETURN);
}

bool InterfaceTest::showsTheList() const
{
    const xcb_window_t window = session->desk.windows().ofTitle(TARVEL);
    if (window == 0) {
        return false;
    }
    const auto place = session->desk.windows().placeOf(window);
    if (place.width <= INSIDE || place.height <= INSIDE) {
        return false; // it has gone meanwhile
    }
    const auto picture = desktop::capture(session->desk.connection(), place);
    return picture.at(place.x + INSIDE / 2, place.y + INSIDE / 2) == STRIP;
}

std::optional<std::string> InterfaceTest::kept(const std::string& key) const
{
    return session->desk.keyring().items().lookUp("com.quorvent.Tarvel (" + key + ")");
}

} // namespace agent
