#include "linux/xdg/IdentityTable.h"

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

std::size_t presentArguments(const ExecutionKey& key, const std::vector<std::string>& arguments)
{
    return static_cast<std::size_t>(std::count_if(
        key.fixedArguments.begin(),
        key.fixedArguments.end(),
        [&](const auto& fixed) {
            return std::find(arguments.begin(), arguments.end(), fixed) != arguments.end();
        }
    ));
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
    const bool named =
        key.invokedAs.empty() || invokedAs.substr(invokedAs.rfind('/') + 1) == key.invokedAs;
    return named && hasAllArguments(key, arguments);
}

} // namespace

void IdentityTable::add(std::size_t application, std::size_t preference, ExecutionKey key)
{
    Rows& rows = key.kind == ExecutionKey::Kind::Script ? scripts : executables;
    std::string path = key.path;
    rows[std::move(path)].push_back({application, preference, std::move(key)});
}

void IdentityTable::addInterpreter(const std::string& path)
{
    interpreters.insert(path);
}

std::optional<std::size_t>
IdentityTable::find(const proc::ProcessFacts& facts, const Lookup& lookup) const
{
    Candidates found = candidates(facts, lookup);
    if (found.empty()) {
        return std::nullopt;
    }
    const bool several = std::any_of(found.begin(), found.end(), [&](const Row* row) {
        return row->application != found.front()->application;
    });
    if (!several) {
        return found.front()->application;
    }
    const std::optional<std::size_t> claimed = lookup.claim(facts.pid);
    const auto rank = [&](const Row* row) {
        const std::size_t present = presentArguments(row->key, facts.arguments);
        const bool all = present == row->key.fixedArguments.size();
        return std::tuple(row->application != claimed, !all, ~present, row->preference);
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
    const auto byExecutable = executables.find(facts.executable);
    Candidates result =
        byExecutable == executables.end() ? Candidates() : possibleOf(byExecutable->second, facts);
    const bool loader = isLoader(facts.executable);
    const bool runsFiles =
        loader || interpreters.contains(facts.executable) || isInterpreter(facts.executable);
    const std::optional<std::string> script =
        result.empty() && runsFiles ? scriptArgument(facts.executable, facts.arguments)
                                    : std::nullopt;
    if (script) {
        const std::string path = absolutePath(*script, facts.workingDirectory);
        const std::vector<Row>* rows = rowsOf(loader ? executables : scripts, path, lookup);
        result = rows == nullptr ? Candidates() : possibleOf(*rows, facts);
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
