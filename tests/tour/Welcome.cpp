#include "tour/Welcome.h"

#include "desktop/Wait.h"
#include "person/Screens.h"

namespace tour {

namespace {

namespace screens = person::screens;

constexpr auto APPLICATION = "XTerm";
constexpr auto IDENTIFIER = "debian-xterm";

} // namespace

void Welcome::carryOut(Steps& steps)
{
    steps.carryOut("agent started in an empty home", [this] { return startAgent(); });
    steps.carryOut("set up a password, clicked", [this] { return openPasswordWindow(); });
    steps.carryOut("password typed twice", [this] { return typePassword(); });
    steps.carryOut("password typed into the popover", [this] { return passTheGate(); });
    steps.carryOut("plus in the popover, clicked", [this] { return openPicker(); });
    steps.carryOut("an application picked", [this] { return pickApplication(); });
}

std::string Welcome::startAgent()
{
    stage.session.startAgent({});
    stage.user.waitFor(person::window(screens::GREETING));
    stage.user.waitFor(screens::NO_PASSWORD);
    stage.takePicture("02-greeting");
    return "it greets, and its popover says that there is no password";
}

std::string Welcome::openPasswordWindow()
{
    stage.user.click(person::button("Set Up Password", screens::GREETING));
    stage.user.waitForFocusOn(screens::NEW_PASSWORD);
    stage.user.waitForEndOf(person::window(screens::GREETING));
    return "the password window is open, the greeting is gone";
}

std::string Welcome::typePassword()
{
    stage.user.type(agent::PASSWORD);
    stage.user.press(desktop::KEY_TAB);
    stage.user.waitForFocusOn(screens::CONFIRMATION);
    stage.user.type(agent::PASSWORD);
    stage.takePicture("03-password");
    stage.user.press(desktop::KEY_RETURN);
    stage.user.waitForEndOf(person::window(screens::PASSWORD_WINDOW));
    require(
        stage.session.waitForLine("Monitoring services started"), "it does not watch applications"
    );
    const bool hasHelper =
        desktop::waitUntil([this] { return stage.session.helpers().size() == 1; }, agent::PATIENCE);
    require(hasHelper, "its helper does not run");
    return "the agent watches applications, its helper watches it";
}

std::string Welcome::passTheGate()
{
    stage.user.waitForFocusOn(screens::GATE);
    stage.takePicture("04-gate");
    stage.user.type(agent::PASSWORD);
    stage.user.press(desktop::KEY_RETURN);
    stage.user.waitFor(screens::NOTHING_PROTECTED);
    stage.takePicture("05-nothing-protected");
    return "it shows its content: nothing is protected yet";
}

std::string Welcome::openPicker()
{
    stage.user.click(screens::ADD);
    stage.user.waitFor(screens::ADMINISTRATIVE);
    stage.user.click(screens::ADMINISTRATIVE);
    stage.user.click(screens::FILTER);
    stage.user.waitForFocusOn(screens::FILTER);
    stage.user.type("xterm");
    stage.user.waitFor(person::row(APPLICATION, screens::PICKER));
    stage.takePicture("06-picker");
    return "administrative applications are offered one by one, and filtered";
}

std::string Welcome::pickApplication()
{
    stage.user.click(person::row(APPLICATION, screens::PICKER));
    stage.user.waitForEndOf(person::row(APPLICATION, screens::PICKER));
    const std::string wanted = std::string(IDENTIFIER) + ";";
    stage.user.waitUntil("the keyring keeps the choice", [&] {
        const desktop::KeyringItems& items = stage.session.desk.keyring().items();
        return items.lookUp("com.quorvent.Tarvel (Applications)") == wanted;
    });
    stage.user.press(desktop::KEY_ESCAPE);
    stage.user.waitForEndOf(person::window(screens::PICKER));
    return std::string(IDENTIFIER) + " is protected, and kept in the keyring";
}

} // namespace tour
