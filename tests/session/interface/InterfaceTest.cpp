#include "session/interface/InterfaceTest.h"

#include "desktop/TemporaryFolder.h"

#include <iostream>

namespace agent {

namespace {

constexpr auto APPLICATION_FOLDERS = "XDG_DATA_DIRS";

} // namespace

void InterfaceTest::SetUp()
{
    desktop::Desktop::Parts parts;
    parts.screens = {{0, 0, 1280, 720}};
    session = std::make_unique<AgentSession>(parts);
    user = std::make_unique<person::Person>(session->desk);
    desk().environment[APPLICATION_FOLDERS] = (desk().home() / "no applications").string();
}

void InterfaceTest::TearDown()
{
    if (HasFailure() && user) {
        std::cerr << session->report() << user->report();
    }
}

void InterfaceTest::showInstalledApplications()
{
    desk().environment.erase(APPLICATION_FOLDERS);
}

void InterfaceTest::startAgent()
{
    session->startAgent({});
    // The last thing of a start: it would take the keyboard from what is opened before.
    user->waitForKeysTo(screens::POPOVER);
}

void InterfaceTest::startWithPassword(const std::vector<std::string>& applications)
{
    session->protect(applications);
    startAgent();
}

void InterfaceTest::enterAtGate(const std::string& password)
{
    user->write(password, screens::GATE);
    user->activate(screens::UNLOCK);
}

void InterfaceTest::unlock()
{
    enterAtGate(PASSWORD);
    user->waitFor(screens::CONTENT);
}

void InterfaceTest::openPopover()
{
    desktop::ChildProcess second = desk().start({AgentSession::agentPath()});
    ASSERT_EQ(second.waitForExitStatus(PATIENCE), 0);
    user->waitFor(person::window(screens::POPOVER));
}

void InterfaceTest::choose(const person::Control& entryOfMenu)
{
    user->activate(screens::OPTIONS);
    user->goTo(entryOfMenu);
    user->press(desktop::KEY_RETURN);
}

void InterfaceTest::turnTo(const std::string& window)
{
    constexpr std::uint16_t MARGIN = 24;
    desktop::Rectangle place = user->placeOf(person::window(window));
    place.width = MARGIN;
    place.height = MARGIN;
    user->clickAt(place);
    user->waitForKeysTo(window);
}

void InterfaceTest::enterNewPassword(const std::string& password, const std::string& confirmation)
{
    user->write(password, screens::NEW_PASSWORD);
    user->write(confirmation, screens::CONFIRMATION);
    user->activate(screens::CONFIRM);
}

void InterfaceTest::answerAlert(const std::string& title, const std::string& message)
{
    user->waitFor(person::label(title));
    user->waitFor(person::label(message));
    user->activate(screens::ALERT_BUTTON);
    user->waitForEndOf(person::label(message));
}

void InterfaceTest::addApplication(
    const std::string& identifier, const std::string& name, const std::string& categories
)
{
    std::filesystem::copy_file("/usr/bin/xterm", programOf(identifier));
    desktop::writeFile(
        desk().home() / ".local/share/applications" / (identifier + ".desktop"),
        "[Desktop Entry]\nType=Application\nName=" + name +
            "\nExec=" + programOf(identifier).string() + "\nCategories=" + categories + "\n"
    );
}

std::filesystem::path InterfaceTest::programOf(const std::string& identifier)
{
    return desk().home() / identifier;
}

desktop::ChildProcess InterfaceTest::startApplication(const std::string& identifier)
{
    return desk().start({programOf(identifier)});
}

std::optional<std::string> InterfaceTest::setting(const std::string& key)
{
    return desk().keyring().items().lookUp("com.quorvent.Tarvel (" + key + ")");
}

void InterfaceTest::waitForSetting(const std::string& key, const std::string& value)
{
    user->waitUntil(key + " is \"" + value + "\" in the keyring", [&] {
        return setting(key) == value;
    });
}

} // namespace agent
