#include "tour/Farewell.h"

#include "desktop/Pixels.h"
#include "desktop/Wait.h"
#include "person/Screens.h"

namespace tour {

namespace {

namespace screens = person::screens;

} // namespace

void Farewell::carryOut(Steps& steps)
{
    steps.carryOut("item in the panel, clicked", [this] { return openPopover(); });
    steps.carryOut("wrong password in the popover", [this] { return tryWrongPassword(); });
    steps.carryOut("right password in the popover", [this] { return passTheGate(); });
    steps.carryOut("quit, in the menu of the popover", [this] { return quit(); });
    steps.carryOut("started again, unlocked, quit", [this] { return quitOnceMore(); });
}

std::string Farewell::openPopover()
{
    stage.user.waitUntil("the item is in the panel", [this] {
        return !desktop::capture(stage.session.desk.connection(), stage.panel->firstItem())
                    .isAllOf(desktop::StatusPanel::LIGHT);
    });
    stage.user.clickAt(stage.panel->firstItem());
    stage.user.waitForFocusOn(screens::GATE);
    require(!stage.user.sees(screens::CONTENT), "the popover shows its content");
    stage.takePicture("12-gate");
    return "the popover asks for the password";
}

std::string Farewell::tryWrongPassword()
{
    enterAtGate("not the password");
    stage.user.waitUntil("the popover says no", [this] {
        return stage.user.find(screens::GATE).description() == "Wrong password";
    });
    stage.takePicture("13-wrong-password-at-the-gate");
    require(!stage.user.sees(screens::CONTENT), "the popover shows its content");
    return "the popover shows nothing";
}

std::string Farewell::passTheGate()
{
    enterAtGate(agent::PASSWORD);
    stage.user.waitFor(person::row("XTerm", screens::POPOVER));
    stage.takePicture("14-protected");
    return "the popover lists the protected application";
}

std::string Farewell::quit()
{
    chooseQuit();
    stage.takePicture("15-menu");
    stage.user.press(desktop::KEY_RETURN);
    require(hasEnded(), "agent and helper do not end");
    stage.takePicture("16-quit");
    return "agent and helper have ended";
}

/// The agent before was its helper's child; how this one ends can be seen from here.
std::string Farewell::quitOnceMore()
{
    desktop::ChildProcess& agent = stage.session.startAgent({});
    stage.user.waitForFocusOn(screens::GATE);
    require(!stage.user.sees(person::window(screens::GREETING)), "it greets once more");
    enterAtGate(agent::PASSWORD);
    stage.user.waitFor(person::row("XTerm", screens::POPOVER));
    chooseQuit();
    stage.user.press(desktop::KEY_RETURN);
    const auto status = agent.waitForExitStatus(agent::PATIENCE);
    require(status == 0, "the agent does not end with status 0");
    require(hasEnded(), "the helper does not end");
    return "all was kept; the agent ended with status 0, and its helper with it";
}

void Farewell::enterAtGate(const std::string& password)
{
    stage.user.type(password);
    stage.user.press(desktop::KEY_RETURN);
}

void Farewell::chooseQuit()
{
    stage.user.click(screens::OPTIONS);
    stage.user.goTo(screens::QUIT);
}

bool Farewell::hasEnded()
{
    return desktop::waitUntil(
        [this] { return stage.session.agents().empty() && stage.session.helpers().empty(); },
        agent::PATIENCE
    );
}

} // namespace tour
