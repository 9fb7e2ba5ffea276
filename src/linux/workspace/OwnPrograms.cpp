#include "linux/workspace/OwnPrograms.h"

#include "linux/session/Programs.h"
#include "linux/workspace/BundleLauncher.h"

namespace workspace {

namespace {

constexpr auto LOGIN_ITEMS = "/Contents/Library/LoginItems/";

KnownApplicationPtr agentOf(const platform::Bundle& bundle)
{
    return std::make_shared<KnownApplication>(KnownApplication{
        .identifier = bundle.identifier.value_or(""),
        .name = bundle.name.value_or(""),
        .iconName = bundle.identifier.value_or(""),
        .bundlePath = bundle.path,
        .executable = BundleLauncher::executableOf(bundle.path),
        .shown = false,
    });
}

KnownApplicationPtr helperOf(const platform::Bundle& bundle)
{
    const std::string path = bundle.path + LOGIN_ITEMS + session::HELPER + ".app";
    return std::make_shared<KnownApplication>(KnownApplication{
        .identifier = session::HELPER_IDENTIFIER,
        .name = session::HELPER,
        .iconName = bundle.identifier.value_or(""),
        .bundlePath = path,
        .executable = BundleLauncher::executableOf(path),
        .shown = false,
        .background = true,
    });
}

} // namespace

OwnPrograms::OwnPrograms(const platform::Bundle& mainBundle, ApplicationIndex& others)
    : own(agentOf(mainBundle)),
      loginItem(helperOf(mainBundle)),
      others(others)
{
}

KnownApplicationPtr OwnPrograms::ofProcess(const proc::ProcessFacts& facts) const
{
    for (const KnownApplicationPtr& program : {own, loginItem}) {
        if (facts.executable == program->executable) {
            return program;
        }
    }
    return others.ofProcess(facts);
}

KnownApplicationPtr OwnPrograms::ofWindow(const WindowFacts& facts) const
{
    return others.ofWindow(facts);
}

KnownApplicationPtr OwnPrograms::ofCopy(const proc::ProcessFacts& facts) const
{
    return others.ofCopy(facts);
}

KnownApplicationPtr OwnPrograms::withIdentifier(const std::string& identifier) const
{
    for (const KnownApplicationPtr& program : {own, loginItem}) {
        if (identifier == program->identifier) {
            return program;
        }
    }
    return others.withIdentifier(identifier);
}

KnownApplicationPtr OwnPrograms::ofEntry(const std::string& entry) const
{
    return others.ofEntry(entry);
}

bool OwnPrograms::plays(const std::string& identifier, const std::string& role) const
{
    return others.plays(identifier, role);
}

std::set<std::string> OwnPrograms::executables() const
{
    std::set<std::string> result = others.executables();
    result.insert(own->executable);
    result.insert(loginItem->executable);
    return result;
}

bool OwnPrograms::mayBeApplication(const std::string& executable) const
{
    return executable == own->executable || executable == loginItem->executable ||
           others.mayBeApplication(executable);
}

bool OwnPrograms::shareProgram(const std::string& identifier, const std::string& other) const
{
    return others.shareProgram(identifier, other);
}

bool OwnPrograms::mayHandOver(const std::string& identifier, const std::string& other) const
{
    return others.mayHandOver(identifier, other);
}

void OwnPrograms::learn(const proc::ProcessFacts& facts, const std::string& identifier)
{
    others.learn(facts, identifier);
}

} // namespace workspace
