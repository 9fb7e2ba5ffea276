#include "tour/Stage.h"

#include "desktop/Backdrop.h"
#include "desktop/Failure.h"
#include "desktop/Pixels.h"
#include "desktop/WindowFrames.h"

#include <sstream>
#include <utility>

namespace tour {

namespace {

constexpr desktop::Pixel BACKDROP = 0x2E4A5E;

desktop::Desktop::Parts parts()
{
    desktop::Desktop::Parts parts;
    parts.windowManager = false; // comes when its look is known
    return parts;
}

} // namespace

Stage::Stage(std::filesystem::path pictures)
    : session(parts()),
      user(session.desk),
      pictures(std::move(pictures))
{
    desktop::styleWindowFrames(session.desk.home());
    session.desk.startWindowManager();
    panel.emplace(session.desk, desktop::StatusPanel::Kind::SystemTray);
    desktop::paintBackdrop(session.desk.connection(), BACKDROP);
}

void Stage::takePicture(const std::string& name)
{
    user.waitUntilScreenRests();
    desktop::Desktop& desk = session.desk;
    const desktop::Rectangle all = desk.windows().placeOf(desk.connection().root());
    desktop::capture(desk.connection(), all).savePng(pictures / (name + ".png"));
}

void require(bool held, const std::string& otherwise)
{
    if (!held) {
        throw desktop::Failure(otherwise);
    }
}

std::string milliseconds(std::chrono::steady_clock::duration time)
{
    std::ostringstream text;
    text.precision(1);
    text << std::fixed << std::chrono::duration<double, std::milli>(time).count() << " ms";
    return text.str();
}

} // namespace tour
