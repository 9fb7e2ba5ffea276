// Finds the application that a process is, by tables of what applications execute: its executable,
// or the script that an interpreter runs. What a process says about itself only chooses among those
// that this leaves, never against an application that was chosen for protection and fits as well.
// Pure: facts come in, an index of an application goes out. Filled once, then read by any thread.
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

    friend bool operator==(const ExecutionKey&, const ExecutionKey&) = default;
};

/// How an application stands among others that execute the same file.
struct Standing
{
    std::size_t preference = 0; // the lower one wins between applications that are otherwise equal
    bool chosen = false;        // for protection
    bool homemade = false;      // anybody at the desktop could have written its entry
};

class IdentityTable
{
public:
    /// What is asked only where it matters, as it costs time.
    struct Lookup
    {
        /// The real path of a file; the path itself where there is none.
        std::function<std::string(const std::string& path)> realPath;
        /// Whether there is such a file. Unset: there is none.
        std::function<bool(const std::string& path)> exists = {};
        /// The indices of the applications that the process is said to be, the best word first.
        std::function<std::vector<std::size_t>(pid_t pid)> claims;
    };

    void add(std::size_t application, Standing standing, ExecutionKey key);

    /// A program that runs scripts, beside those that are known for it.
    void addInterpreter(const std::string& path);

    /// Where shells look for a script that is named without its folder.
    void setSearchFolders(std::vector<std::string> folders);

    [[nodiscard]] std::optional<std::size_t>
    find(const proc::ProcessFacts& facts, const Lookup& lookup) const;

    /// False where `find` would give nothing whatever else is known of the process. Fast.
    [[nodiscard]] bool mayFind(const std::string& executable) const;

    /// The indices of all applications with a key on the file.
    [[nodiscard]] std::vector<std::size_t> applicationsOf(const std::string& path) const;

    /// True for a program that runs others, and so tells nothing by itself.
    [[nodiscard]] bool runsOthers(const std::string& executable) const;

    /// All files in the table.
    [[nodiscard]] std::vector<std::string> files() const;

private:
    struct Row
    {
        std::size_t application = 0;
        Standing standing;
        ExecutionKey key;
    };

    using Rows = std::unordered_map<std::string, std::vector<Row>>;
    using Candidates = std::vector<const Row*>;

    [[nodiscard]] Candidates
    candidates(const proc::ProcessFacts& facts, const Lookup& lookup) const;
    [[nodiscard]] Candidates ofRunFile(const proc::ProcessFacts& facts, const Lookup& lookup) const;
    [[nodiscard]] Candidates ofLoaded(
        const std::string& path,
        const std::string& file,
        const proc::ProcessFacts& facts,
        const Lookup& lookup
    ) const;
    [[nodiscard]] Candidates byName(const proc::ProcessFacts& facts) const;
    [[nodiscard]] Candidates ofSearched(
        const std::string& name, const proc::ProcessFacts& facts, const Lookup& lookup
    ) const;
    static std::size_t
    best(const Candidates& found, const proc::ProcessFacts& facts, const Lookup& lookup);
    static Candidates possibleOf(const std::vector<Row>& rows, const proc::ProcessFacts& facts);
    static const std::vector<Row>*
    rowsOf(const Rows& rows, const std::string& path, const Lookup& lookup);

    Rows executables;
    Rows scripts;
    std::unordered_set<std::string> interpreters;
    std::vector<std::string> searchFolders;
};

} // namespace xdg
