#include "linux/xdg/XdgApplicationIndex.h"

#include "linux/xdg/Interpreters.h"
#include "linux/xdg/ProgramResolver.h"
#include "linux/xdg/XdgFileManager.h"

#include <algorithm>
#include <filesystem>
#include <string_view>

namespace xdg {

namespace {

workspace::KnownApplicationPtr known(const InstalledApplication* application)
{
    if (application == nullptr) {
        return nullptr;
    }
    return std::make_shared<workspace::KnownApplication>(workspace::KnownApplication{
        .identifier = application->entry.id,
        .name = application->entry.name,
        .iconName = application->entry.icon,
        .bundlePath = bundlePath(application->entry.id),
        .executable = application->executable,
        .shown = !application->entry.noDisplay,
        .chosen = application->chosen,
        .homemade = application->entry.homemade,
    });
}

} // namespace

workspace::KnownApplicationPtr XdgApplicationIndex::ofProcess(const proc::ProcessFacts& facts) const
{
    const std::shared_ptr<const Catalogue> current = catalogue.current();
    const InstalledApplication* application =
        current->ofProcess(facts, [this](pid_t pid) { return claimsOf(pid); });
    if (application == nullptr) {
        const std::optional<std::string> id = learnedOf(facts);
        application = id ? current->find(*id) : nullptr;
    }
    return known(application);
}

std::vector<std::string> XdgApplicationIndex::claimsOf(pid_t pid) const
{
    std::vector<std::string> claims;
    for (auto& claim :
         {processes.environment(pid).launchedEntry, processes.cgroupApplication(pid)}) {
        if (claim) {
            claims.push_back(*claim);
        }
    }
    return claims;
}

std::optional<std::string> XdgApplicationIndex::learnedOf(const proc::ProcessFacts& facts) const
{
    const std::scoped_lock lock(mutex);
    if (learned.empty()) {
        return std::nullopt;
    }
    auto found = learned.find(facts.executable);
    if (found == learned.end() && isInterpreter(facts.executable)) {
        const auto script = scriptArgument(facts.executable, facts.arguments);
        found = script ? learned.find(realPath(*script)) : found;
    }
    return found == learned.end() ? std::nullopt : std::optional(found->second);
}

bool XdgApplicationIndex::mayBeApplication(const std::string& executable) const
{
    if (catalogue.current()->mayBeExecutedBy(executable)) {
        return true;
    }
    const std::scoped_lock lock(mutex);
    return learned.contains(executable);
}

bool XdgApplicationIndex::shareProgram(const std::string& identifier, const std::string& other)
    const
{
    return catalogue.current()->shareProgram(identifier, other);
}

bool XdgApplicationIndex::mayHandOver(const std::string& identifier, const std::string& other) const
{
    return catalogue.current()->mayHandOver(identifier, other);
}

void XdgApplicationIndex::learn(const proc::ProcessFacts& facts, const std::string& identifier)
{
    constexpr std::size_t MOST_LEARNED = 256;
    const auto key = catalogue.current()->keyToLearn(facts, identifier);
    if (!key) {
        return;
    }
    {
        const std::scoped_lock lock(mutex);
        if (learned.size() >= MOST_LEARNED || !learned.emplace(key->path, identifier).second) {
            return;
        }
    }
    catalogue.learn(identifier, *key);
}

workspace::KnownApplicationPtr XdgApplicationIndex::ofWindow(const workspace::WindowFacts& facts
) const
{
    return known(
        catalogue.current()->ofWindow({facts.applicationId, facts.windowClass, facts.instanceName})
    );
}

workspace::KnownApplicationPtr XdgApplicationIndex::ofCopy(const proc::ProcessFacts& facts) const
{
    const std::shared_ptr<const Catalogue> current = catalogue.current();
    const InstalledApplication* own =
        current->ofProcess(facts, [this](pid_t pid) { return claimsOf(pid); });
    if (own != nullptr && own->chosen) {
        return known(own);
    }
    if (!current->runsOthers(facts.executable)) {
        return known(current->ofCopy(ExecutionKey::Kind::Executable, facts.executable));
    }
    const auto script = scriptArgument(facts.executable, facts.arguments);
    if (!script || isLoader(facts.executable)) {
        return nullptr;
    }
    const std::filesystem::path path = std::filesystem::path(facts.workingDirectory) / *script;
    return known(current->ofCopy(ExecutionKey::Kind::Script, realPath(path.string())));
}

workspace::KnownApplicationPtr XdgApplicationIndex::withIdentifier(const std::string& identifier
) const
{
    const std::shared_ptr<const Catalogue> current = catalogue.current();
    const InstalledApplication* own = current->find(identifier);
    return known(own != nullptr ? own : current->playing(identifier));
}

workspace::KnownApplicationPtr XdgApplicationIndex::ofEntry(const std::string& entry) const
{
    constexpr std::string_view SUFFIX = ".desktop";
    const std::shared_ptr<const Catalogue> current = catalogue.current();
    if (entry.starts_with('/')) {
        return known(current->ofEntry(entry));
    }
    const bool isFileName = entry.ends_with(SUFFIX);
    return known(current->find(isFileName ? entry.substr(0, entry.size() - SUFFIX.size()) : entry));
}

bool XdgApplicationIndex::plays(const std::string& identifier, const std::string& role) const
{
    const std::shared_ptr<const Catalogue> current = catalogue.current();
    const InstalledApplication* application = current->find(identifier);
    return application != nullptr &&
           std::find(application->roles.begin(), application->roles.end(), role) !=
               application->roles.end();
}

std::set<std::string> XdgApplicationIndex::executables() const
{
    return catalogue.current()->files();
}

} // namespace xdg
