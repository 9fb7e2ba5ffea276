// The environment of this process, and what a program that it starts is to get of it. Threads may
// read at any time: nobody writes.
#pragma once

#include <cstdlib>
#include <string>
#include <vector>

#include <unistd.h>

namespace process {

/// Empty where the variable is unset.
inline std::string environmentValue(const char* name)
{
    const char* value = ::secure_getenv(name);
    return value != nullptr ? value : "";
}

/// All of it, as "NAME=value".
inline std::vector<std::string> environmentEntries()
{
    std::vector<std::string> entries;
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        entries.emplace_back(*entry);
    }
    return entries;
}

/// The name of such an entry.
inline std::string environmentName(const std::string& entry)
{
    return entry.substr(0, entry.find('='));
}

/// The texts as the system takes lists of them: with a null at the end, and valid while they are.
inline std::vector<char*> pointersTo(std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

} // namespace process
