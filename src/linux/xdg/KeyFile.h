// The format of desktop entries and service files: lines of keys below headings of groups. Pure
// functions that take any bytes.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace xdg {

/// One line "key[locale]=value", the value as it stands in the file.
struct KeyLine
{
    std::string_view group;
    std::string_view key;
    std::string_view locale; // empty where the line names none
    std::string_view value;
};

/// Calls `visit` for each line with a key, in order, until it answers false.
void visitKeys(std::string_view text, const std::function<bool(const KeyLine& line)>& visit);

/// The value with its escapes (\s \n \t \r \\) resolved.
std::string unescaped(std::string_view value);

/// The parts of a list, each ended by a semicolon, with their escapes resolved.
std::vector<std::string> splitList(std::string_view value);

} // namespace xdg
