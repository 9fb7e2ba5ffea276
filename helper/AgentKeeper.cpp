#include "helper/AgentKeeper.h"

#include "helper/TerminationNotice.h"

namespace helper {

void AgentKeeper::begin(bool startedByAgent, bool seesOthers)
{
    if (hands.attach()) {
        state = State::Watching;
    } else if (!startedByAgent) {
        launch();
    } else if (seesOthers) {
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
    } else if (!hands.attach()) {
        end();
    }
    // Status 0 beside a living agent: it had handed over to that one.
}

void AgentKeeper::agentArrived()
{
    if (state == State::Waiting && hands.attach()) {
        state = State::Watching;
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
    if (state != State::Settling) {
        return;
    }
    if (hands.attach()) {
        state = State::Watching;
    } else {
        restart();
    }
}

void AgentKeeper::restart()
{
    if (limit.allow(hands.now())) {
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
    state = State::Waiting;
    hands.warn(
        "Tarvel is not running",
        reason + " Your applications are not protected until you start Tarvel again."
    );
}

void AgentKeeper::end()
{
    if (state != State::Finished) {
        state = State::Finished;
        hands.finish();
    }
}

} // namespace helper
