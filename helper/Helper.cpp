#include "helper/Helper.h"

#include "helper/AgentLaunch.h"
#include "linux/session/Programs.h"
#include "linux/session/SessionInstance.h"
#include "linux/session/SessionWatch.h"

namespace helper {

namespace {

// Answers those who ask whether a helper runs.
class InstanceSource final : public EventSource
{
public:
    explicit InstanceSource(session::SessionInstance& instance) : instance(instance) {}

    pollfd awaited() const override { return {instance.fd(), POLLIN, 0}; }

    void wake() override { instance.handle(); }

private:
    session::SessionInstance& instance;
};

} // namespace

Helper::Helper()
{
    signals.onAskedToEnd = [this] { keeper.sessionEnds(); };
    signals.onChildEnded = [this] { agent.childMayHaveEnded(); };
    arrival.onArrived = [this] { keeper.agentArrived(); };
    agent.onEnded = [this](std::optional<int> status) { keeper.agentEnded(status); };
    display.onLost = [this] { keeper.sessionEnds(); };
    bus.onProblem = complain;
    bus.onNotice = [this](const std::string& name, const std::string& object) {
        keeper.noticeReceived(name, object);
    };
}

int Helper::run(session::SessionInstance& instance)
{
    InstanceSource second(instance);
    bus.connect();
    // Once the bus passes notices on, not before: an agent may end as soon as it has begun.
    bus.settle([this] { begin(); });
    // In the order of their weight: who ends the session comes before the notices, these before the
    // end of an agent. What follows from its end is decided in a later turn, by the bus.
    for (EventSource* source : std::initializer_list<EventSource*>{
             &signals, &display, &bus, &agent, &arrival, &alarm, &second}) {
        loop.add(*source);
    }
    return loop.run();
}

void Helper::begin()
{
    keeper.begin({.byAgent = isStartedByAgent(), .seesOthers = arrival.isPossible()});
    // After the agent is safe: a display that is busy lets its clients wait.
    display.connect();
}

void Helper::complain(const std::string& text)
{
    const std::string line = session::HELPER + (": " + text) + "\n";
    // Nobody is left to be told when this fails.
    [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, line.data(), line.size());
}

RestartLimit::TimePoint Helper::now()
{
    return Clock::now();
}

bool Helper::attach()
{
    return agent.attach();
}

std::optional<int> Helper::latestStatus()
{
    return session::SessionWatch::latestExitStatus(session::AGENT);
}

bool Helper::start(std::string& problem)
{
    const std::optional<pid_t> process = startAgent(problem);
    if (process.has_value()) {
        agent.adopt(*process);
        // The new agent may have notices to send.
        bus.connect();
    }
    return process.has_value();
}

void Helper::settle(std::function<void()> then)
{
    bus.settle(std::move(then));
}

void Helper::callAt(RestartLimit::TimePoint moment, std::function<void()> then)
{
    alarm.set(moment, std::move(then));
}

void Helper::warn(const std::string& title, const std::string& text)
{
    complain(title + ". " + text);
    bus.notify(title, text);
}

void Helper::finish()
{
    loop.finish(0);
}

} // namespace helper
