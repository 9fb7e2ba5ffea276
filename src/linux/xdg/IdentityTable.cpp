#include "linux/xdg/IdentityTable.h"

#include "linux/files/Names.h"
#include "linux/xdg/Interpreters.h"

#include <algorithm>
#include <filesystem>
#include <tuple>
#include <utility>

namespace xdg {

namespace {

std::string absolutePath(const std::string& path, const std::string& folder)
{
    const std::filesystem::path whole = std::filesystem::path(folder) / path;
    return whole.lexically_normal().string();
}

/// How many of the key's arguments the process has, in their order.
std::size_t presentArguments(const ExecutionKey& key, const std::vector<std::string>& arguments)
{
    std::size_t present = 0;
    auto rest = arguments.begin();
    for (const std::string& fixed : key.fixedArguments) {
        const auto found = std::find(rest, arguments.end(), fixed);
        if (found != arguments.end()) {
            ++present;
            rest = found + 1;
        }
    }
    return present;
}

bool hasAllArguments(const ExecutionKey& key, const std::vector<std::string>& arguments)
{
    return presentArguments(key, arguments) == key.fixedArguments.size();
}

bool possible(const ExecutionKey& key, const std::vector<std::string>& arguments)
{
    if (!key.shared) {
        return true;
    }
    const std::string invokedAs = arguments.empty() ? "" : arguments.front();
    const bool named = key.invokedAs.empty() || files::baseName(invokedAs) == key.invokedAs;
    return named && hasAllArguments(key, arguments);
}

} // namespace

void IdentityTable::add(std::size_t application, Standing standing, ExecutionKey key)
{
    Rows& rows = key.kind == ExecutionKey::Kind::Script ? scripts : executables;
    std::string path = key.path;
    rows[std::move(path)].push_back({application, standing, std::move(key)});
}

void IdentityTable::setSearchFolders(std::vector<std::string> folders)
{
    searchFolders = std::move(folders);
}

void IdentityTable::addInterpreter(const std::string& path)
{
    interpreters.insert(path);
}

bool IdentityTable::mayFind(const std::string& executable) const
{
    return executable.empty() || executables.contains(executable) || isLoader(executable) ||
           interpreters.contains(executable) || isInterpreter(executable);
}

bool IdentityTable::runsOthers(const std::string& executable) const
{
    return isLoader(executable) || isInterpreter(executable) || isLauncher(executable) ||
           interpreters.contains(executable);
}

std::optional<std::size_t>
IdentityTable::find(const proc::ProcessFacts& facts, const Lookup& lookup) const
{
    const Candidates found = candidates(facts, lookup);
    if (found.empty()) {
        return std::nullopt;
    }
    const bool several = std::any_of(found.begin(), found.end(), [&](const Row* row) {
        return row->application != found.front()->application;
    });
    return several ? best(found, facts, lookup) : found.front()->application;
}

std::size_t
IdentityTable::best(const Candidates& found, const proc::ProcessFacts& facts, const Lookup& lookup)
{
    const bool chosenFits = std::any_of(found.begin(), found.end(), [&](const Row* row) {
        return row->standing.chosen && hasAllArguments(row->key, facts.arguments);
    });
    const std::vector<std::size_t> claims = lookup.claims(facts.pid);
    const auto rank = [&](const Row* row) {
        const std::size_t present = presentArguments(row->key, facts.arguments);
        const bool all = present == row->key.fixedArguments.size();
        const Standing& standing = row->standing;
        return std::tuple(
            chosenFits && standing.homemade && !standing.chosen, // written to hide the chosen one
            !all,
            ~present,
            !standing.chosen,
            std::find(claims.begin(), claims.end(), row->application) - claims.begin(),
            standing.preference
        );
    };
    return (*std::min_element(
                found.begin(),
                found.end(),
                [&](const Row* left, const Row* right) { return rank(left) < rank(right); }
            )
    )->application;
}

IdentityTable::Candidates
IdentityTable::candidates(const proc::ProcessFacts& facts, const Lookup& lookup) const
{
    if (facts.executable.empty()) {
        return byName(facts);
    }
    const auto byExecutable = executables.find(facts.executable);
    Candidates result =
        byExecutable == executables.end() ? Candidates() : possibleOf(byExecutable->second, facts);
    return result.empty() ? ofRunFile(facts, lookup) : result;
}

/// What an interpreter or the loader of programs runs.
IdentityTable::Candidates
IdentityTable::ofRunFile(const proc::ProcessFacts& facts, const Lookup& lookup) const
{
    const bool loader = isLoader(facts.executable);
    if (!loader && !interpreters.contains(facts.executable) && !isInterpreter(facts.executable)) {
        return {};
    }
    const std::optional<std::string> file = scriptArgument(facts.executable, facts.arguments);
    if (!file) {
        return {};
    }
    const std::string path = absolutePath(*file, facts.workingDirectory);
    if (const std::vector<Row>* rows = rowsOf(loader ? executables : scripts, path, lookup)) {
        return possibleOf(*rows, facts);
    }
    if (loader) {
        return ofLoaded(path, *file, facts, lookup);
    }
    const bool there = lookup.exists && lookup.exists(path);
    return there || !searchesScripts(facts.executable) ? Candidates()
                                                       : ofSearched(*file, facts, lookup);
}

/// A script that is not in the folder of the process is looked for by shells where programs are.
IdentityTable::Candidates IdentityTable::ofSearched(
    const std::string& name, const proc::ProcessFacts& facts, const Lookup& lookup
) const
{
    if (name.find('/') != std::string::npos) {
        return {};
    }
    for (const std::string& folder : searchFolders) {
        std::string path = folder;
        if (const auto* rows = rowsOf(scripts, path.append("/").append(name), lookup)) {
            return possibleOf(*rows, facts);
        }
    }
    return {};
}

/// The loader was given an interpreter, which was given a script.
IdentityTable::Candidates IdentityTable::ofLoaded(
    const std::string& path,
    const std::string& file,
    const proc::ProcessFacts& facts,
    const Lookup& lookup
) const
{
    proc::ProcessFacts loaded = facts;
    loaded.executable = lookup.realPath(path);
    loaded.arguments = {
        std::find(facts.arguments.begin(), facts.arguments.end(), file), facts.arguments.end()};
    return isLoader(loaded.executable) ? Candidates() : ofRunFile(loaded, lookup);
}

/// A process that closed itself against being looked at: its first argument is all there is.
IdentityTable::Candidates IdentityTable::byName(const proc::ProcessFacts& facts) const
{
    const std::string called = facts.arguments.empty() ? "" : facts.arguments.front();
    if (called.empty()) {
        return {};
    }
    if (const auto found = executables.find(called); found != executables.end()) {
        return possibleOf(found->second, facts);
    }
    Candidates result;
    for (const auto& [path, rows] : executables) {
        if (files::baseName(path) == files::baseName(called)) {
            const Candidates more = possibleOf(rows, facts);
            result.insert(result.end(), more.begin(), more.end());
        }
    }
    return result;
}

IdentityTable::Candidates
IdentityTable::possibleOf(const std::vector<Row>& rows, const proc::ProcessFacts& facts)
{
    Candidates result;
    for (const Row& row : rows) {
        if (possible(row.key, facts.arguments)) {
            result.push_back(&row);
        }
    }
    return result;
}

const std::vector<IdentityTable::Row>*
IdentityTable::rowsOf(const Rows& rows, const std::string& path, const Lookup& lookup)
{
    auto found = rows.find(path);
    if (found == rows.end()) {
        found = rows.find(lookup.realPath(path));
    }
    return found == rows.end() ? nullptr : &found->second;
}

std::vector<std::size_t> IdentityTable::applicationsOf(const std::string& path) const
{
    std::vector<std::size_t> result;
    for (const Rows* rows : {&executables, &scripts}) {
        const auto found = rows->find(path);
        if (found == rows->end()) {
            continue;
        }
        for (const Row& row : found->second) {
            result.push_back(row.application);
        }
    }
    return result;
}

std::vector<std::string> IdentityTable::files() const
{
    std::vector<std::string> result;
    result.reserve(executables.size() + scripts.size());
    for (const Rows* rows : {&executables, &scripts}) {
        for (const auto& [path, ignored] : *rows) {
            result.push_back(path);
        }
    }
    return result;
}

} // namespace xdg
