// Finds the application that a process is, by tables of what applications execute. Pure: facts come
// in, an index of an application goes out. Filled once, then read by any thread.
//
// The executable decides, or the script that an interpreter runs. What the process says about
// itself (its launcher's claim, its arguments) only chooses among those that this leaves.
#pragma once

#include "linux/proc/ProcessFacts.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace xdg {

/// One way in which an application is executed.
struct ExecutionKey
{
    enum class Kind
    {
        Executable,
        Script,
    };

    Kind kind = Kind::Executable;
    std::string path;
    std::vector<std::string> fixedArguments;
    /// The program runs others, too: it is this application only with all the arguments, and where
    /// `invokedAs` is set, only under that name.
    bool shared = false;
    std::string invokedAs;
};

class IdentityTable
{
public:
    /// What is asked only where it matters, as it costs time.
    struct Lookup
    {
        /// The real path of a file; the path itself where there is none.
        std::function<std::string(const std::string& path)> realPath;
        /// The index of the application that the process's launcher says it started.
        std::function<std::optional<std::size_t>(pid_t pid)> claim;
    };

    /// A lower `preference` wins between applications that are otherwise equal.
    void add(std::size_t application, std::size_t preference, ExecutionKey key);

    /// A program that runs scripts, beside those that are known for it.
    void addInterpreter(const std::string& path);

    [[nodiscard]] std::optional<std::size_t>
    find(const proc::ProcessFacts& facts, const Lookup& lookup) const;

    /// All files in the table.
    [[nodiscard]] std::vector<std::string> files() const;

private:
    struct Row
    {
        std::size_t application = 0;
        std::size_t preference = 0;
        ExecutionKey key;
    };

    using Rows = std::unordered_map<std::string, std::vector<Row>>;
    using Candidates = std::vector<const Row*>;

    [[nodiscard]] Candidates
    candidates(const proc::ProcessFacts& facts, const Lookup& lookup) const;
    static Candidates possibleOf(const std::vector<Row>& rows, const proc::ProcessFacts& facts);
    static const std::vector<Row>*
    rowsOf(const Rows& rows, const std::string& path, const Lookup& lookup);

    Rows executables;
    Rows scripts;
    std::unordered_set<std::string> interpreters;
};

} // namespace xdg
