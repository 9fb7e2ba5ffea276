#include "linux/xdg/ChosenApplication.h"

#include "linux/xdg/KeyFile.h"

#include <algorithm>
#include <array>

namespace xdg {

namespace {

using Kind = ExecutionKey::Kind;

// Nothing sensible is executed in more ways; a file that says so was not written here.
constexpr std::size_t MOST_KEYS = 64;

constexpr std::string_view EXECUTABLE = "executable";
constexpr std::string_view SCRIPT = "script";
constexpr std::string_view SHARED = "shared";
constexpr std::string_view SHARED_SCRIPT = "shared-script";
// Parts of a key before its arguments: kind, path, name it is invoked as.
constexpr std::size_t KEY_PARTS = 3;

/// So that `unescaped` gives the text back, in a list or alone.
std::string escaped(std::string_view text)
{
    std::string result;
    for (const char character : text) {
        switch (character) {
        case '\n':
            result += "\\n";
            break;
        case '\r':
            result += "\\r";
            break;
        case '\t':
            result += "\\t";
            break;
        case ' ':
            result += "\\s";
            break;
        case '\\':
        case ';':
            result.push_back('\\');
            [[fallthrough]];
        default:
            result.push_back(character);
        }
    }
    return result;
}

/// An empty part would be lost in a list.
std::string listOf(const std::vector<std::string>& parts)
{
    std::string result;
    for (const std::string& part : parts) {
        result += escaped(part) + ";";
    }
    return result;
}

std::string kindOf(const ExecutionKey& key)
{
    const bool isScript = key.kind == Kind::Script;
    if (key.shared) {
        return std::string(isScript ? SHARED_SCRIPT : SHARED);
    }
    return std::string(isScript ? SCRIPT : EXECUTABLE);
}

std::string lineOf(const ExecutionKey& key)
{
    std::vector<std::string> parts{kindOf(key), key.path, "=" + key.invokedAs};
    for (const std::string& argument : key.fixedArguments) {
        parts.push_back("=" + argument); // may be empty
    }
    return "Key=" + listOf(parts) + "\n";
}

void addKey(ChosenApplication& application, std::string_view line)
{
    const std::vector<std::string> parts = splitList(line);
    const bool sound = parts.size() >= KEY_PARTS && parts[1].starts_with('/') &&
                       std::all_of(parts.begin() + 2, parts.end(), [](const auto& part) {
                           return part.starts_with('=');
                       });
    if (!sound || application.keys.size() >= MOST_KEYS) {
        return;
    }
    ExecutionKey key{
        .kind = parts[0] == SCRIPT || parts[0] == SHARED_SCRIPT ? Kind::Script : Kind::Executable,
        .path = parts[1],
        .fixedArguments = {},
        .shared = parts[0] == SHARED || parts[0] == SHARED_SCRIPT,
        .invokedAs = parts[2].substr(1)};
    for (std::size_t index = KEY_PARTS; index < parts.size(); ++index) {
        key.fixedArguments.push_back(parts[index].substr(1));
    }
    application.keys.push_back(std::move(key));
}

using Field = std::string ChosenApplication::*;

struct NamedField
{
    std::string_view name;
    Field field;
};

constexpr std::array FIELDS{
    NamedField{"Path", &ChosenApplication::path},
    NamedField{"Name", &ChosenApplication::name},
    NamedField{"Icon", &ChosenApplication::icon},
    NamedField{"Executable", &ChosenApplication::executable},
    NamedField{"WindowClass", &ChosenApplication::startupWindowClass},
};

template <typename Value> void addMissing(std::vector<Value>& known, const std::vector<Value>& more)
{
    for (const Value& value : more) {
        if (std::find(known.begin(), known.end(), value) == known.end()) {
            known.push_back(value);
        }
    }
}

/// What it was known by first stays, and so does what it is now. In between there may be anything:
/// whoever can write its entry can make it be executed in any number of ways.
void limit(std::vector<ExecutionKey>& keys, const std::vector<ExecutionKey>& present)
{
    for (std::size_t index = keys.size(); index > 0 && keys.size() > MOST_KEYS; --index) {
        const auto key = keys.begin() + static_cast<std::ptrdiff_t>(index - 1);
        if (std::find(present.begin(), present.end(), *key) == present.end()) {
            keys.erase(key);
        }
    }
    keys.resize(std::min(keys.size(), MOST_KEYS));
}

} // namespace

void merge(ChosenApplication& known, const ChosenApplication& later)
{
    known.id = later.id;
    const std::string windowClass = known.startupWindowClass;
    for (const NamedField& entry : FIELDS) {
        if (!(later.*entry.field).empty()) {
            known.*entry.field = later.*entry.field;
        }
    }
    if (!windowClass.empty()) {
        known.startupWindowClass = windowClass; // its present one is known from the entry itself
    }
    addMissing(known.roles, later.roles);
    addMissing(known.keys, later.keys);
    limit(known.keys, later.keys);
}

std::string textOf(const ChosenApplications& applications)
{
    std::string text = "# What the protected applications are recognised by. Written by Tarvel.\n";
    for (const auto& [id, application] : applications) {
        if (id.find('\n') != std::string::npos) {
            continue; // no heading can bear it
        }
        text += "\n[" + id + "]\n";
        for (const NamedField& entry : FIELDS) {
            text += std::string(entry.name) + "=" + escaped(application.*entry.field) + "\n";
        }
        text += "Roles=" + listOf(application.roles) + "\n";
        for (const ExecutionKey& key : application.keys) {
            text += lineOf(key);
        }
    }
    return text;
}

ChosenApplications parseChosenApplications(std::string_view text)
{
    ChosenApplications result;
    visitKeys(text, [&](const KeyLine& line) {
        if (line.group.empty()) {
            return true;
        }
        ChosenApplication& application = result[std::string(line.group)];
        application.id = line.group;
        const auto* field = std::find_if(FIELDS.begin(), FIELDS.end(), [&](const auto& entry) {
            return entry.name == line.key;
        });
        if (field != FIELDS.end()) {
            application.*(field->field) = unescaped(line.value);
        } else if (line.key == "Roles") {
            application.roles = splitList(line.value);
        } else if (line.key == "Key") {
            addKey(application, line.value);
        }
        return true;
    });
    return result;
}

} // namespace xdg
