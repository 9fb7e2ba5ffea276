#include "tour/Tour.h"

#include "agent/Cover.h"
#include "desktop/Typist.h"
#include "desktop/Wait.h"
#include "tour/Farewell.h"
#include "tour/Visit.h"
#include "tour/Welcome.h"

#include <chrono>
#include <csignal>
#include <iostream>
#include <vector>

namespace tour {

using namespace std::chrono_literals;
using desktop::Clock;

namespace {

constexpr char EARLY_KEY = 'x';
constexpr auto MESSAGE = "Nobody else could type this.";

} // namespace

bool Tour::run()
{
    steps.carryOut("a desktop of its own", [this] { return openDesktop(); });
    if (steps.allHeld()) {
        Welcome(*stage).carryOut(steps);
    }
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
    if (steps.allHeld()) {
        Farewell(*stage).carryOut(steps);
    }
    if (!steps.allHeld()) {
        sayWhatThereIs();
    }
    return steps.allHeld();
}

void Tour::sayWhatThereIs()
{
    if (stage) {
        std::cout << "\nWhat was there to see (" << (pictures / "failure.png").string() << "):\n"
                  << session->report() << stage->user.report() << std::flush;
        stage->takePicture("failure");
    }
}

void Tour::stay()
{
    application.reset();
    Visit(*stage).untilAskedToEnd();
}

std::string Tour::openDesktop()
{
    stage = std::make_unique<Stage>(pictures);
    session = &stage->session;
    stage->takePicture("01-desktop");
    return "two screens, openbox, a panel, session bus and keyring at " +
           session->desk.server().displayName();
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
    stage->takePicture("07-locked");
    return "both screens covered " + milliseconds(time) + " after its start, " +
           std::to_string(typist.count()) + " keys typed";
}

std::string Tour::enterWrongPassword()
{
    session->enter("not the password");
    const bool stays = desktop::holdsFor([this] { return agent::isCovered(session->desk); }, 1s);
    require(stays, "the cover did not stay");
    require(session->countOf("Terminated: XTerm") == 0, "xterm ended");
    stage->takePicture("08-wrong-password");
    return "both screens stay covered";
}

std::string Tour::enterRightPassword()
{
    const auto start = Clock::now();
    session->enter(agent::PASSWORD);
    require(session->waitForEndOfCover(), "the screens stay covered");
    const auto time = Clock::now() - start;
    require(applicationKeepsFocus(), "xterm has not the focus");
    stage->takePicture("09-unlocked");
    return "uncovered after " + milliseconds(time) + ", xterm has the focus";
}

std::string Tour::typeIntoApplication()
{
    session->desk.input().type(MESSAGE);
    desktop::waitUntil(
        [this] { return application->received().ends_with(MESSAGE); }, agent::PATIENCE
    );
    const std::string received = application->received();
    require(received == MESSAGE, "it received \"" + received + "\" instead");
    stage->takePicture("10-in-use");
    return "what was typed after the right password, and nothing of what was typed before";
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
    stage->takePicture("11-locked-after-kill");
    return "its helper started it again, both screens covered after " + milliseconds(time);
}

std::string Tour::unlockAgain()
{
    session->enter(agent::PASSWORD);
    require(session->waitForEndOfCover(), "the screens stay covered");
    require(applicationKeepsFocus(), "xterm has not the focus");
    return "uncovered, xterm has the focus";
}

bool Tour::applicationKeepsFocus()
{
    const auto hasFocus = [this] { return applicationHasFocus(); };
    return desktop::waitUntil(
        [&hasFocus] { return desktop::holdsFor(hasFocus, 250ms); }, agent::PATIENCE
    );
}

bool Tour::applicationHasFocus()
{
    desktop::WindowList& windows = session->desk.windows();
    const xcb_window_t active = windows.active();
    return active != 0 && windows.activeProcess() == application->process().id() &&
           windows.isViewable(active) && windows.focused() == active;
}

} // namespace tour
