#include "helper/AgentKeeper.h"

#include "helper/TerminationNotice.h"

namespace helper {

void AgentKeeper::begin(Start start)
{
    if (attach()) {
        return;
    }
    if (!start.byAgent) {
        launch();
    } else if (start.seesOthers) {
        // It ended while this program was being started.
        agentEnded(hands.latestStatus());
    } else {
        state = State::Waiting;
    }
}

void AgentKeeper::agentEnded(std::optional<int> status)
{
    if (state == State::Finished) {
        return;
    }
    if (status != 0) {
        state = State::Settling;
        hands.settle([this] { settled(); });
    } else if (!attach()) {
        end();
    }
    // Status 0 beside a living agent: it had handed over to that one.
}

void AgentKeeper::agentArrived()
{
    if (state == State::Waiting) {
        attach();
    }
}

void AgentKeeper::noticeReceived(std::string_view name, std::string_view object)
{
    if (TerminationNotice::matches(name, object)) {
        end();
    }
}

void AgentKeeper::sessionEnds()
{
    end();
}

void AgentKeeper::settled()
{
    if (state == State::Settling && !attach()) {
        restart();
    }
}

bool AgentKeeper::attach()
{
    const bool isThere = hands.attach();
    if (isThere) {
        state = State::Watching;
        nextTry.reset();
    }
    return isThere;
}

void AgentKeeper::restart()
{
    const RestartLimit::TimePoint now = hands.now();
    if (nextTry.has_value() && now < *nextTry) {
        waitForNextTry();
        return;
    }
    // The one that was tried last has lived for a while.
    nextTry.reset();
    if (limit.allow(now)) {
        launch();
    } else {
        giveUp(
            "It ended unexpectedly more than " + std::to_string(RestartLimit::MOST) +
            " times within a minute."
        );
    }
}

void AgentKeeper::launch()
{
    std::string problem;
    if (hands.start(problem)) {
        state = State::Watching;
    } else {
        giveUp("It cannot be started: " + problem + ".");
    }
}

void AgentKeeper::giveUp(const std::string& reason)
{
    const bool isNew = !nextTry.has_value();
    nextTry = hands.now() + BETWEEN_TRIES;
    waitForNextTry();
    if (isNew) {
        hands.warn(
            "Tarvel is not running",
            reason + " Your applications are not protected. A start is tried once a minute."
        );
    }
}

void AgentKeeper::waitForNextTry()
{
    state = State::Waiting;
    hands.callAt(*nextTry, [this] { tryAgain(); });
}

void AgentKeeper::tryAgain()
{
    if (state == State::Waiting && !attach()) {
        nextTry = hands.now() + BETWEEN_TRIES;
        launch();
    }
}

void AgentKeeper::end()
{
    if (state != State::Finished) {
        state = State::Finished;
        hands.finish();
    }
}

} // namespace helper
