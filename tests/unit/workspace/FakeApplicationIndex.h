// An index of applications that are added by hand; a process is an application's by its executable.
#pragma once

#include "linux/workspace/ApplicationIndex.h"

#include <map>
#include <utility>
#include <vector>

namespace workspace {

class FakeApplicationIndex final : public ApplicationIndex
{
public:
    void add(const KnownApplicationPtr& application) { applications.push_back(application); }

    void hide(const std::string& identifier)
    {
        std::erase_if(applications, [&](const auto& application) {
            return application->identifier == identifier;
        });
    }

    KnownApplicationPtr ofProcess(const proc::ProcessFacts& facts) const override
    {
        return find([&](const auto& entry) { return entry.executable == facts.executable; });
    }

    KnownApplicationPtr ofWindow(const WindowFacts& facts) const override
    {
        return find([&](const auto& entry) { return entry.identifier == facts.windowClass; });
    }

    KnownApplicationPtr ofCopy(const proc::ProcessFacts& facts) const override
    {
        const auto found = copies.find(facts.executable);
        return found == copies.end() ? nullptr : withIdentifier(found->second);
    }

    KnownApplicationPtr withIdentifier(const std::string& identifier) const override
    {
        return find([&](const auto& entry) { return entry.identifier == identifier; });
    }

    KnownApplicationPtr ofEntry(const std::string& entry) const override
    {
        return withIdentifier(entry);
    }

    bool plays(const std::string& identifier, const std::string& role) const override
    {
        const auto found = roles.find(identifier);
        return found != roles.end() && found->second == role;
    }

    std::set<std::string> executables() const override
    {
        std::set<std::string> result;
        for (const KnownApplicationPtr& application : applications) {
            result.insert(application->executable);
        }
        return result;
    }

    bool mayBeApplication(const std::string& executable) const override
    {
        return executables().contains(executable);
    }

    bool shareProgram(const std::string& identifier, const std::string& other) const override
    {
        return shared.contains(identifier) && shared.contains(other);
    }

    bool mayHandOver(const std::string& identifier, const std::string& other) const override
    {
        return !launched && shareProgram(identifier, other);
    }

    void learn(const proc::ProcessFacts& facts, const std::string& identifier) override
    {
        learned.push_back(facts.executable + " is " + identifier);
    }

    std::map<std::string, std::string> roles;
    std::set<std::string> shared;              // all of these execute one file
    bool launched = false;                     // by that file, which is none of theirs
    std::map<std::string, std::string> copies; // identifiers, by executable
    std::vector<std::string> learned;

private:
    template <typename Matches> KnownApplicationPtr find(const Matches& matches) const
    {
        for (const KnownApplicationPtr& application : applications) {
            if (matches(*application)) {
                return application;
            }
        }
        return nullptr;
    }

    std::vector<KnownApplicationPtr> applications;
};

} // namespace workspace
