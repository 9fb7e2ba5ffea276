// The whole helper: one a session, until the session or the agent ends on purpose. One thread.
#pragma once

#include "helper/AgentArrival.h"
#include "helper/AgentKeeper.h"
#include "helper/AgentWatch.h"
#include "helper/Alarm.h"
#include "helper/DisplayWatch.h"
#include "helper/EventLoop.h"
#include "helper/SessionBus.h"
#include "helper/Signals.h"

#include <string>

namespace session {
class SessionInstance;
}

namespace helper {

class Helper final : private AgentKeeper::Hands
{
public:
    Helper();

    /// Works until there is nothing left to do; gives the status to end with.
    int run(session::SessionInstance& instance);

    /// One line to standard error.
    static void complain(const std::string& text);

private:
    void begin();
    RestartLimit::TimePoint now() override;
    bool attach() override;
    std::optional<int> latestStatus() override;
    bool start(std::string& problem) override;
    void settle(std::function<void()> then) override;
    void callAt(RestartLimit::TimePoint moment, std::function<void()> then) override;
    void warn(const std::string& title, const std::string& text) override;
    void finish() override;

    AgentKeeper keeper{*this};
    EventLoop loop;
    Signals signals;
    DisplayWatch display;
    AgentArrival arrival;
    SessionBus bus;
    AgentWatch agent;
    Alarm alarm;
};

} // namespace helper
