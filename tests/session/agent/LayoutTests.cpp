// Another layout of the keyboard than the one that the password was made with.

#include "desktop/Pixels.h"
#include "session/agent/AgentTest.h"

#include <optional>
#include <utility>

namespace agent {

namespace {

constexpr std::uint32_t KEY_SHIFT_RIGHT = 0xFFE2;
constexpr desktop::Pixel LAYOUT_TEXT = 0xC8CCD4;

} // namespace

class Layout : public AgentTest
{
protected:
    bool setLayouts() const
    {
        auto done =
            session->desk.start({"setxkbmap", "-layout", "us,ru", "-option", "grp:shifts_toggle"});
        return done.waitForExitStatus(PATIENCE) == 0;
    }

    void toggleWithTheKeyboard() const
    {
        desktop::Input& hands = session->desk.input();
        hands.hold(desktop::KEY_SHIFT);
        hands.hold(KEY_SHIFT_RIGHT);
        hands.release(KEY_SHIFT_RIGHT);
        hands.release(desktop::KEY_SHIFT);
    }

    /// A point of the small text that names the layout, which stands below all other text.
    std::optional<std::pair<int, int>> layoutText() const
    {
        const desktop::Rectangle area = controlsOf(session->desk.server().screens().at(0));
        const desktop::Picture picture = desktop::capture(session->desk.connection(), area);
        for (int y = area.y + area.height - 1; y >= area.y; --y) {
            for (int x = area.x; x < area.x + area.width; ++x) {
                if (picture.at(x, y) == LAYOUT_TEXT) {
                    return std::pair(x, y);
                }
            }
        }
        return std::nullopt;
    }

    /// The line that ends with such a point.
    desktop::Picture lineOfTextAt(int y) const
    {
        constexpr int HEIGHT = 15;
        desktop::Rectangle line = controlsOf(session->desk.server().screens().at(0));
        line.y = static_cast<std::int16_t>(y - HEIGHT + 1);
        line.height = HEIGHT;
        return desktop::capture(session->desk.connection(), line);
    }

    /// It says something else, and is not pressed any more.
    bool turnsIntoAnother(const desktop::Picture& before, int y) const
    {
        return desktop::waitUntil(
            [&] {
                const desktop::Picture now = lineOfTextAt(y);
                return now.countDifferent(before) > 0 && now.contains(LAYOUT_TEXT);
            },
            PATIENCE
        );
    }
};

TEST_F(Layout, IsSwitchedInTheLockByAClickOnItsName)
{
    open();
    ASSERT_TRUE(setLayouts());
    watchHere({TERMINAL});
    toggleWithTheKeyboard();
    Recorder xterm(session->desk);
    ASSERT_TRUE(locks());
    session->enter(PASSWORD); // in Russian letters
    EXPECT_TRUE(coverStaysFor(500ms));

    const auto place = layoutText();
    ASSERT_TRUE(place.has_value());
    const desktop::Picture russian = lineOfTextAt(place->second);
    session->desk.input().click(
        static_cast<std::int16_t>(place->first), static_cast<std::int16_t>(place->second)
    );
    ASSERT_TRUE(turnsIntoAnother(russian, place->second));
    EXPECT_TRUE(opensWithThePassword());
    EXPECT_TRUE(getsFocus(xterm.process()));
}

} // namespace agent
