#include "linux/xdg/KeyFile.h"

#include <algorithm>

namespace xdg {

namespace {

constexpr std::string_view BLANKS = " \t\r";

std::string_view trimmed(std::string_view text)
{
    const std::size_t begin = std::min(text.find_first_not_of(BLANKS), text.size());
    text.remove_prefix(begin);
    return text.substr(0, text.find_last_not_of(BLANKS) + 1);
}

/// A line that is neither a heading, a comment nor blank; without '=' its key is empty.
KeyLine keyLine(std::string_view group, std::string_view line)
{
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) {
        return {};
    }
    KeyLine result{group, trimmed(line.substr(0, equals)), {}, trimmed(line.substr(equals + 1))};
    const std::size_t bracket = result.key.find('[');
    if (bracket != std::string_view::npos && result.key.ends_with(']')) {
        result.locale = result.key.substr(bracket + 1, result.key.size() - bracket - 2);
        result.key = result.key.substr(0, bracket);
    }
    return result;
}

char escapeMeaning(char character)
{
    switch (character) {
    case 's':
        return ' ';
    case 'n':
        return '\n';
    case 't':
        return '\t';
    case 'r':
        return '\r';
    default:
        return character;
    }
}

/// Position of the first semicolon that is none of the text's own.
std::size_t endOfPart(std::string_view list)
{
    std::size_t index = 0;
    while (index < list.size() && list[index] != ';') {
        index += list[index] == '\\' ? 2U : 1U;
    }
    return std::min(index, list.size());
}

} // namespace

void visitKeys(std::string_view text, const std::function<bool(const KeyLine& line)>& visit)
{
    std::string_view group;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = trimmed(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.empty() || line.front() == '#') {
            continue;
        }
        if (line.front() == '[' && line.back() == ']') {
            group = line.substr(1, line.size() - 2);
            continue;
        }
        const KeyLine entry = keyLine(group, line);
        if (!entry.key.empty() && !visit(entry)) {
            return;
        }
    }
}

std::string unescaped(std::string_view value)
{
    std::string result;
    result.reserve(value.size());
    for (std::size_t index = 0; index < value.size(); ++index) {
        if (value[index] == '\\' && index + 1 < value.size()) {
            result.push_back(escapeMeaning(value[++index]));
        } else {
            result.push_back(value[index]);
        }
    }
    return result;
}

std::vector<std::string> splitList(std::string_view value)
{
    std::vector<std::string> parts;
    while (!value.empty()) {
        const std::size_t end = endOfPart(value);
        if (end > 0) {
            parts.push_back(unescaped(value.substr(0, end)));
        }
        value.remove_prefix(std::min(end + 1, value.size()));
    }
    return parts;
}

} // namespace xdg
