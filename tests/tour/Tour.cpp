#include "tour/Tour.h"

#include "agent/Cover.h"
#include "desktop/Failure.h"
#include "desktop/KeyringItems.h"
#include "desktop/Pixels.h"
#include "desktop/Typist.h"
#include "desktop/Wait.h"

#include <csignal>
#include <iostream>
#include <sstream>
#include <vector>

namespace tour {

using namespace std::chrono_literals;
using desktop::Clock;

namespace {

constexpr auto APPLICATION = "debian-xterm";
constexpr char EARLY_KEY = 'x';
constexpr auto MESSAGE = "Nobody else could type this.";

std::string milliseconds(Clock::duration time)
{
    std::ostringstream text;
    text.precision(1);
    text << std::fixed << std::chrono::duration<double, std::milli>(time).count() << " ms";
    return text.str();
}

} // namespace

bool Tour::run()
{
    steps.carryOut("a desktop of its own", [this] { return openDesktop(); });
    steps.carryOut("settings in the keyring", [this] { return storeSettings(); });
    steps.carryOut("agent started", [this] { return startAgent(); });
    steps.carryOut("xterm started, keys typed all the while", [this] {
        return startApplication();
    });
    steps.carryOut("wrong password", [this] { return enterWrongPassword(); });
    steps.carryOut("right password", [this] { return enterRightPassword(); });
    steps.carryOut("what xterm received", [this] { return typeIntoApplication(); });
    steps.carryOut("xterm ended", [this] { return endApplication(); });
    steps.carryOut("xterm started again", [this] { return lockAgain(); });
    steps.carryOut("agent killed while it locks", [this] { return killAgent(); });
    steps.carryOut("right password again", [this] { return unlockAgain(); });
    if (!steps.allHeld() && session) {
        std::cout << "\nWhat was there to see (" << (pictures / "failure.png").string() << "):\n"
                  << session->report() << std::flush;
        takePicture("failure");
    }
    return steps.allHeld();
}

std::string Tour::openDesktop()
{
    session = std::make_unique<agent::AgentSession>();
    takePicture("1-desktop");
    return "two screens, openbox, session bus and keyring at " +
           session->desk.server().displayName();
}

std::string Tour::storeSettings()
{
    session->protect({APPLICATION});
    const auto kept =
        desktop::lookUpItem(session->desk.bus().address(), "com.quorvent.Tarvel (Applications)");
    require(kept == std::string(APPLICATION) + ";", "the keyring did not keep them");
    return std::string("a password, and ") + APPLICATION + " as the protected application";
}

std::string Tour::startAgent()
{
    require(session->startAndWait(), "it does not watch applications");
    const bool hasHelper =
        desktop::waitUntil([this] { return session->helpers().size() == 1; }, agent::PATIENCE);
    require(hasHelper, "its helper does not run");
    return "it watches applications, its helper watches it";
}

std::string Tour::startApplication()
{
    desktop::Typist typist(session->desk.server().displayName(), EARLY_KEY);
    require(typist.waitForMore(1), "no key could be typed");
    const auto start = Clock::now();
    application = std::make_unique<agent::Recorder>(session->desk);
    const bool covered = desktop::waitUntil(
        [this] { return agent::isCovered(session->desk); }, agent::PATIENCE, 0us
    );
    const auto time = Clock::now() - start;
    require(covered && session->waitForCover(), "the screens are not covered");
    require(session->waitForLine("Did start: XTerm"), "its window did not come up");
    require(application->waitUntilItListens(), "xterm does not run behind the cover");
    typist.stop();
    require(agent::isCovered(session->desk), "the cover did not stay");
    takePicture("2-locked");
    return "both screens covered " + milliseconds(time) + " after its start, " +
           std::to_string(typist.count()) + " keys typed";
}

std::string Tour::enterWrongPassword()
{
    session->enter("not the password");
    const bool stays = desktop::holdsFor([this] { return agent::isCovered(session->desk); }, 1s);
    require(stays, "the cover did not stay");
    require(session->countOf("Terminated: XTerm") == 0, "xterm ended");
    takePicture("3-wrong-password");
    return "both screens stay covered";
}

std::string Tour::enterRightPassword()
{
    const auto start = Clock::now();
    session->enter(agent::PASSWORD);
    require(session->waitForEndOfCover(), "the screens stay covered");
    const auto time = Clock::now() - start;
    require(
        desktop::waitUntil([this] { return applicationHasFocus(); }, agent::PATIENCE),
        "xterm has not the focus"
    );
    takePicture("4-unlocked");
    return "uncovered after " + milliseconds(time) + ", xterm has the focus";
}

std::string Tour::typeIntoApplication()
{
    session->desk.input().type(MESSAGE);
    require(
        application->waitFor(MESSAGE), "it received \"" + application->received() + "\" instead"
    );
    takePicture("5-in-use");
    return "only what was typed after the right password";
}

std::string Tour::endApplication()
{
    application->process().signal(SIGTERM);
    require(application->process().waitForEnd(agent::PATIENCE).has_value(), "it does not end");
    require(session->waitForLine("Terminated: XTerm"), "the agent did not notice");
    application.reset();
    return "the agent noticed";
}

std::string Tour::lockAgain()
{
    application = std::make_unique<agent::Recorder>(session->desk, "second");
    require(session->waitForCover(), "the screens are not covered");
    require(session->waitForLine("Did start: XTerm", 2), "its window did not come up");
    return "covered again";
}

std::string Tour::killAgent()
{
    const pid_t killed = session->process().id();
    const auto start = Clock::now();
    session->process().signal(SIGKILL);
    require(session->process().waitForEnd(agent::PATIENCE).has_value(), "it does not end");
    std::vector<pid_t> agents;
    const bool lives = desktop::waitUntil(
        [&] {
            agents = session->agents();
            return agents.size() == 1 && agents.front() != killed &&
                   agent::isCovered(session->desk);
        },
        agent::PATIENCE
    );
    const auto time = Clock::now() - start;
    require(lives, "its helper does not bring it and the cover back");
    require(session->waitForLine("Monitoring services started", 2), "it does not watch again");
    require(session->waitForCover(), "the lock is not whole");
    takePicture("6-locked-after-kill");
    return "its helper started it again, both screens covered after " + milliseconds(time);
}

std::string Tour::unlockAgain()
{
    session->enter(agent::PASSWORD);
    require(session->waitForEndOfCover(), "the screens stay covered");
    require(
        desktop::waitUntil([this] { return applicationHasFocus(); }, agent::PATIENCE),
        "xterm has not the focus"
    );
    return "uncovered, xterm has the focus";
}

void Tour::require(bool held, const std::string& otherwise)
{
    if (!held) {
        throw desktop::Failure(otherwise);
    }
}

void Tour::takePicture(const std::string& name)
{
    desktop::Desktop& desk = session->desk;
    const desktop::Rectangle all = desk.windows().placeOf(desk.connection().root());
    desktop::capture(desk.connection(), all).savePng(pictures / (name + ".png"));
}

bool Tour::applicationHasFocus()
{
    desktop::WindowList& windows = session->desk.windows();
    const xcb_window_t active = windows.active();
    return active != 0 && windows.activeProcess() == application->process().id() &&
           windows.isViewable(active) && windows.focused() == active;
}

} // namespace tour
