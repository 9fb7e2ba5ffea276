// Processes that start and end on command.
#pragma once

#include "linux/workspace/ProcessSource.h"

#include <algorithm>
#include <map>
#include <utility>

namespace workspace {

class FakeProcessSource final : public ProcessSource
{
public:
    void start() override { onSnapshot(all); }

    void watchExit(pid_t pid, std::uint64_t /*startTime*/) override { watched.insert(pid); }

    void watchExecutables(std::set<std::string> paths) override { executables = std::move(paths); }

    std::vector<pid_t> ancestorsOf(pid_t pid) const override
    {
        const auto found = ancestors.find(pid);
        return found == ancestors.end() ? std::vector<pid_t>{1} : found->second;
    }

    std::optional<proc::ProcessFacts> factsOf(pid_t pid) const override
    {
        const auto found = std::find_if(all.begin(), all.end(), [&](const auto& facts) {
            return facts.pid == pid;
        });
        return found == all.end() ? std::nullopt : std::optional(*found);
    }

    proc::ProcessEnvironment environmentOf(pid_t pid) const override
    {
        const auto found = environments.find(pid);
        return found == environments.end() ? proc::ProcessEnvironment() : found->second;
    }

    bool isStartedByBus(const proc::ProcessFacts& facts) const override
    {
        return facts.parent == BUS;
    }

    bool alive(pid_t pid, std::uint64_t startTime) const override
    {
        const auto facts = factsOf(pid);
        return facts.has_value() && facts->startTime == startTime;
    }

    std::vector<proc::ProcessFacts> executing(const std::string& executable) const override
    {
        std::vector<proc::ProcessFacts> result = all;
        std::erase_if(result, [&](const auto& facts) { return facts.executable != executable; });
        return result;
    }

    void exec(const proc::ProcessFacts& facts)
    {
        all.push_back(facts);
        if (isOfInterest(facts.pid, facts.executable)) {
            onExec(facts);
        }
    }

    void exit(pid_t pid)
    {
        const auto facts = factsOf(pid);
        std::erase_if(all, [&](const auto& entry) { return entry.pid == pid; });
        if (facts.has_value() && watched.contains(pid)) {
            onExit(pid, facts->startTime);
        }
    }

    static constexpr pid_t BUS = 3;

    std::vector<proc::ProcessFacts> all;
    std::map<pid_t, proc::ProcessEnvironment> environments;
    std::map<pid_t, std::vector<pid_t>> ancestors;
    std::set<pid_t> watched;
    std::set<std::string> executables;
};

} // namespace workspace
