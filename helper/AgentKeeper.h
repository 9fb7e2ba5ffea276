// Decides what the helper does: keeps the agent alive unless it ended on purpose, by the notice or
// with status 0; then the helper ends too, and the next agent brings its own. Any other end is
// undone, a few times a minute. More than that, and a start that fails, is told to the user once;
// from then on one start a minute is tried, until an agent lives that long or somebody has started
// one. Pure: all it does to the world goes through `Hands`. One thread.
#pragma once

#include "helper/RestartLimit.h"
#include "platform/Port.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace helper {

class AgentKeeper
{
public:
    class Hands : public platform::Port
    {
    public:
        virtual RestartLimit::TimePoint now() = 0;

        /// Watches the agent that runs in this session; false when there is none.
        virtual bool attach() = 0;

        /// With which status the latest agent of this session ended; nothing when it said none.
        virtual std::optional<int> latestStatus() = 0;

        /// Starts an agent and watches it; false when it cannot be started.
        virtual bool start(std::string& problem) = 0;

        /// Calls `then` when every notice sent before this call has been received.
        virtual void settle(std::function<void()> then) = 0;

        /// Calls `then` once at that moment, and not at an earlier one that was given before.
        virtual void callAt(RestartLimit::TimePoint moment, std::function<void()> then) = 0;

        /// Tells the user.
        virtual void warn(const std::string& title, const std::string& text) = 0;

        /// Ends this program.
        virtual void finish() = 0;
    };

    static constexpr std::chrono::seconds BETWEEN_TRIES{60};

    explicit AgentKeeper(Hands& hands) : hands(hands) {}

    struct Start
    {
        bool byAgent = false;
        bool seesOthers = true; // an agent that this process did not start could be found at all
    };

    void begin(Start start);

    void agentEnded(std::optional<int> status);
    void agentArrived();
    void noticeReceived(std::string_view name, std::string_view object);

    /// The session goes away, with everything in it.
    void sessionEnds();

private:
    enum class State
    {
        Watching, // an agent lives
        Settling, // it is gone, and its notice may still be under way
        Waiting,  // for an agent that somebody else starts, and for the next try
        Finished,
    };

    void settled();
    bool attach();
    void restart();
    void launch();
    void giveUp(const std::string& reason);
    void waitForNextTry();
    void tryAgain();
    void end();

    Hands& hands;
    RestartLimit limit;
    // Once an agent could not be kept alive: when the next start is allowed.
    std::optional<RestartLimit::TimePoint> nextTry;
    State state = State::Watching;
};

} // namespace helper
