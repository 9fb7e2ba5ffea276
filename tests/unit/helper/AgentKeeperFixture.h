// The keeper of the agent over a system that is played.
#pragma once

#include "helper/AgentKeeper.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

/// What the keeper does with the system, noted in order; time passes when told.
class FakeHands : public helper::AgentKeeper::Hands
{
public:
    helper::RestartLimit::TimePoint now() override { return time; }

    bool attach() override
    {
        if (isAgentThere) {
            calls.emplace_back("attach");
        }
        return isAgentThere;
    }

    std::optional<int> latestStatus() override { return status; }

    bool start(std::string& problem) override
    {
        calls.emplace_back("start");
        problem = startProblem;
        return startProblem.empty();
    }

    void settle(std::function<void()> then) override
    {
        settling = std::move(then);
        if (settlesAtOnce) {
            settled();
        }
    }

    void warn(const std::string& /*title*/, const std::string& text) override
    {
        calls.emplace_back("warn");
        warning = text;
    }

    void callAt(helper::RestartLimit::TimePoint moment, std::function<void()> then) override
    {
        alarmAt = moment;
        alarm = std::move(then);
    }

    void finish() override { calls.emplace_back("finish"); }

    /// Lets time pass, and what is due with it happen.
    void pass(std::chrono::seconds span)
    {
        time += span;
        if (alarm && alarmAt <= time) {
            std::exchange(alarm, nullptr)();
        }
    }

    void settled() { std::exchange(settling, nullptr)(); }

    helper::RestartLimit::TimePoint time{};
    bool isAgentThere = false;
    std::optional<int> status;
    bool settlesAtOnce = true;
    std::string startProblem;
    std::string warning;
    std::vector<std::string> calls;

private:
    std::function<void()> settling;
    std::function<void()> alarm;
    helper::RestartLimit::TimePoint alarmAt{};
};

class AgentKeeper : public testing::Test
{
protected:
    // The agent lives and is watched; nothing of how that came about is left in the calls.
    void watchOne()
    {
        hands.isAgentThere = true;
        keeper.begin({.byAgent = true});
        hands.isAgentThere = false;
        hands.calls.clear();
    }

    void useUpRestarts()
    {
        for (std::size_t i = 0; i < helper::RestartLimit::MOST; ++i) {
            keeper.agentEnded(std::nullopt);
        }
        hands.calls.clear();
    }

    FakeHands hands;
    helper::AgentKeeper keeper{hands};
};
