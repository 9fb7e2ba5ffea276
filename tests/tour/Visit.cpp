#include "tour/Visit.h"

#include "desktop/TemporaryFolder.h"
#include "desktop/Wait.h"
#include "tour/EndingSignals.h"
#include "tour/LocalPorts.h"
#include "tour/Workplace.h"

#include <iostream>
#include <random>
#include <string_view>

namespace tour {

using namespace std::chrono_literals;

namespace {

constexpr auto PAGES = "/usr/share/novnc";
constexpr std::uint16_t USUAL_PORT = 6080;
constexpr std::uint16_t USUAL_DESKTOP_PORT = 5900;

/// All that the protocol looks at.
constexpr int PASSWORD_LENGTH = 8;

std::string newPassword()
{
    constexpr std::string_view LETTERS = "abcdefghijkmnpqrstuvwxyz23456789";
    std::random_device source;
    std::uniform_int_distribution<std::size_t> choice(0, LETTERS.size() - 1);
    std::string password;
    for (int length = 0; length < PASSWORD_LENGTH; ++length) {
        password += LETTERS.at(choice(source));
    }
    return password;
}

} // namespace

desktop::ChildProcess Visit::showDesktop(std::uint16_t port, const std::string& password)
{
    desktop::Desktop& desk = stage.session.desk;
    const auto file = desk.folder() / "visit.password"; // a command line can be read by everybody
    desktop::writeFile(file, password + "\n");
    return desk.start(
        {"x11vnc",
         "-display",
         desk.server().displayName(),
         "-rfbport",
         std::to_string(port),
         "-localhost",
         "-no6",
         "-noipv6",
         "-passwdfile",
         file.string(),
         "-forever",
         "-shared",
         "-xkb",
         "-quiet"}
    );
}

desktop::ChildProcess Visit::serveBrowser(std::uint16_t port, std::uint16_t desktopPort)
{
    const std::string here = "127.0.0.1:";
    return stage.session.desk.start(
        {"websockify",
         "--web",
         PAGES,
         here + std::to_string(port),
         here + std::to_string(desktopPort)}
    );
}

void Visit::untilAskedToEnd()
{
    const EndingSignals signals;
    desktop::Desktop& desk = stage.session.desk;
    stage.panel.reset();
    desk.server().setScreens({desktop::PrivateXServer::twoScreens().front()});
    const Workplace workplace(desk);
    const std::string password = newPassword();
    const std::uint16_t desktopPort = freePort(USUAL_DESKTOP_PORT);
    const std::uint16_t port = freePort(USUAL_PORT);
    desktop::ChildProcess shown = showDesktop(desktopPort, password);
    desktop::ChildProcess served = serveBrowser(port, desktopPort);
    const bool isThere = desktop::waitUntil(
        [&] { return somebodyListensOn(desktopPort) && somebodyListensOn(port); }, agent::PATIENCE
    );
    require(isThere, "the desktop cannot be served to a browser");
    stage.session.startAgent({});
    std::cout << "\nThe desktop is yours, in a browser on this machine:\n\n"
              << "    http://127.0.0.1:" << port
              << "/vnc.html?autoconnect=1&resize=scale#password=" << password
              << "\n\nTarvel's password there is \"" << agent::PASSWORD
              << "\", and XTerm is protected. Ctrl-C here ends it all." << std::endl;
    while (shown.isRunning() && served.isRunning() && !signals.comeWithin(1s)) {
        // goes on
    }
}

} // namespace tour
