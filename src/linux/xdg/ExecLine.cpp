#include "linux/xdg/ExecLine.h"

#include "linux/files/Names.h"
#include "linux/proc/Shells.h"
#include "linux/xdg/Words.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>
#include <utility>

namespace xdg {

namespace {

using Words = std::vector<std::string>;

// Nothing sensible is wrapped deeper.
constexpr int MOST_WRAPPERS = 8;

bool isAssignment(const std::string& word)
{
    const std::size_t equals = word.find('=');
    return equals != std::string::npos && equals > 0 &&
           std::all_of(
               word.begin(),
               word.begin() + static_cast<std::ptrdiff_t>(equals),
               [](char c) {
                   return c == '_' || (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') ||
                          (c >= 'a' && c <= 'z');
               }
           );
}

void dropFront(Words& words, std::size_t count)
{
    words.erase(
        words.begin(), words.begin() + static_cast<std::ptrdiff_t>(std::min(count, words.size()))
    );
}

/// Takes the wrapper's own options away, with the value of those that have one.
template <std::size_t Size>
void dropOptions(Words& words, const std::array<std::string_view, Size>& withValue)
{
    while (!words.empty() && words.front().starts_with('-')) {
        const bool last = words.front() == "--";
        dropFront(words, isOneOf(words.front(), withValue) ? 2 : 1);
        if (last) {
            return;
        }
    }
}

void dropAssignments(Words& words)
{
    while (!words.empty() && isAssignment(words.front())) {
        dropFront(words, 1);
    }
}

/// A command of a script, and the folder to which the script goes before it.
struct PlacedWords
{
    Words words;
    std::filesystem::path folder;
};

void goTo(PlacedWords& placed, const Words& command)
{
    if (command.front() == "cd" && command.size() == 2 && !command.back().starts_with('-')) {
        placed.folder /= command.back();
    }
}

/// The one command of a script that starts the program; without words where it is not plain.
PlacedWords commandOfScript(const std::string& script)
{
    constexpr std::array<std::string_view, 8> PREPARING{
        "cd", "export", "test", "[", "[[", "source", ".", "set"};
    PlacedWords result;
    std::string_view rest = script;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find_first_of(";&|\n"), rest.size());
        Words words = splitExec(rest.substr(0, end));
        dropAssignments(words);
        if (!words.empty() && !isOneOf(words.front(), PREPARING)) {
            result.words = std::move(words);
            return result;
        }
        if (!words.empty()) {
            goTo(result, words);
        }
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return result;
}

/// True for what only a shell understands: which program it comes to cannot be told.
bool isForTheShell(const std::string& word)
{
    constexpr std::array<std::string_view, 10> WORDS{
        "if", "for", "while", "until", "case", "select", "function", "!", "eval", "trap"};
    constexpr std::string_view MARKS = "({$`";
    return isOneOf(word, WORDS) || (!word.empty() && MARKS.find(word.front()) != MARKS.npos);
}

/// The command of the script of "sh -c SCRIPT"; nothing where it is something else.
std::optional<PlacedWords> scriptOfShell(const Words& words)
{
    for (std::size_t index = 1; index + 1 < words.size(); ++index) {
        const std::string& word = words[index];
        if (word.starts_with('-') && !word.starts_with("--") && word.ends_with('c')) {
            PlacedWords command = commandOfScript(words[index + 1]);
            const bool plain = command.words.empty() || !isForTheShell(command.words.front());
            return plain ? std::optional(std::move(command)) : std::nullopt;
        }
        if (!word.starts_with('-')) {
            break;
        }
    }
    return std::nullopt;
}

/// Takes one wrapper away. False when there is none.
bool peel(PlacedWords& placed)
{
    Words& words = placed.words;
    constexpr std::array<std::string_view, 0> NO_VALUES{};
    constexpr std::array<std::string_view, 6> ENV_VALUES{
        "-u", "--unset", "-C", "--chdir", "-S", ""};
    constexpr std::array<std::string_view, 6> PRIORITY_VALUES{"-n", "-c", "-p", "-t", "--user", ""};
    constexpr std::array<std::string_view, 4> PLAIN{"nohup", "setsid", "exec", "dbus-run-session"};
    constexpr std::array<std::string_view, 4> PRIORITY{"nice", "ionice", "chrt", "pkexec"};
    if (words.empty()) {
        return false;
    }
    const std::string name(files::baseName(words.front()));
    if (isAssignment(words.front())) {
        dropAssignments(words);
    } else if (name == "env") {
        dropFront(words, 1);
        dropOptions(words, ENV_VALUES);
        dropAssignments(words);
    } else if (isOneOf(name, PLAIN)) {
        dropFront(words, 1);
        dropOptions(words, NO_VALUES);
    } else if (isOneOf(name, PRIORITY)) {
        dropFront(words, 1);
        dropOptions(words, PRIORITY_VALUES);
    } else if (proc::isShell(name)) {
        std::optional<PlacedWords> script = scriptOfShell(words);
        if (!script) {
            return false;
        }
        words = std::move(script->words);
        if (!script->folder.empty()) {
            placed.folder /= script->folder;
        }
    } else {
        return false;
    }
    return true;
}

/// Takes a line apart the way that shells do, quotes and escapes resolved.
class Splitter
{
public:
    Words split(std::string_view line)
    {
        for (std::size_t index = 0; index < line.size(); ++index) {
            if (line[index] == '\\' && quote != '\'' && index + 1 < line.size()) {
                add(line[++index]);
            } else {
                take(line[index]);
            }
        }
        endWord();
        return std::move(words);
    }

private:
    void take(char character)
    {
        const bool quoteMark = character == '"' || character == '\'';
        const bool blank = character == ' ' || character == '\t' || character == '\n';
        if (quote != 0 && character == quote) {
            quote = 0;
        } else if (quote == 0 && quoteMark) {
            quote = character;
            inWord = true;
        } else if (quote == 0 && blank) {
            endWord();
        } else {
            add(character);
        }
    }

    void add(char character)
    {
        word.push_back(character);
        inWord = true;
    }

    void endWord()
    {
        if (std::exchange(inWord, false)) {
            words.push_back(std::exchange(word, {}));
        }
    }

    Words words;
    std::string word;
    bool inWord = false;
    char quote = 0;
};

bool isFieldCode(const std::string& word)
{
    return word.size() == 2 && word[0] == '%' && word[1] != '%';
}

/// "%%" means one of them; a code inside a longer word is taken away.
std::string withoutFieldCodes(const std::string& word)
{
    std::string result;
    for (std::size_t index = 0; index < word.size(); ++index) {
        if (word[index] != '%') {
            result.push_back(word[index]);
        } else if (++index < word.size() && word[index] == '%') {
            result.push_back('%');
        }
    }
    return result;
}

} // namespace

std::vector<std::string> splitExec(std::string_view exec)
{
    return Splitter().split(exec);
}

ExecCommand commandOf(std::string_view exec)
{
    PlacedWords placed;
    Words& words = placed.words;
    for (const std::string& word : splitExec(exec)) {
        if (!isFieldCode(word)) {
            words.push_back(withoutFieldCodes(word));
        }
    }
    for (int wrappers = 0; wrappers < MOST_WRAPPERS && peel(placed); ++wrappers) {
    }
    if (words.empty() || words.front().empty()) {
        return {};
    }
    ExecCommand command{words.front(), {}, placed.folder.string()};
    dropFront(words, 1);
    command.fixedArguments = std::move(words);
    return command;
}

std::string quotedForExec(const std::string& argument)
{
    constexpr std::string_view RESERVED = " \t\n\"'\\><~|&;$*?#()`";
    std::string result;
    for (const char character : argument) {
        if (character == '%') {
            result += "%%";
        } else if (character == '\\') {
            // Once for the quotes, and both once more for the file.
            result += R"(\\\\)";
        } else if (character == '"' || character == '`' || character == '$') {
            result += R"(\\)";
            result.push_back(character);
        } else if (character == '\n') {
            result += R"(\n)";
        } else {
            result.push_back(character);
        }
    }
    const bool quoted = argument.empty() || argument.find_first_of(RESERVED) != std::string::npos;
    return quoted ? "\"" + result + "\"" : result;
}

} // namespace xdg
