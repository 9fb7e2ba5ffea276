// The applications that the matrix runs, as Debian packages them.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace applications {

enum class SecondStart
{
    Runs,      // beside the first
    HandsOver, // to the first, and ends
};

struct Application
{
    std::string kind; // what is special about its start
    std::string id;   // of its entry
    std::string name;
    std::string command; // as it is typed into a shell
    SecondStart second = SecondStart::HandsOver;
    std::string alsoStarts{}; // name of another application that it executes
    std::vector<std::string>
        busCall{};            // by which the bus starts it: name, object, method, arguments
    std::string entry{};      // of one that only the tests know
    bool refusesRoot = false; // does not run as root
};

/// `home`: where an application of the tests' own may stand.
std::vector<Application>
applications(const std::filesystem::path& home, const std::string& displayName);

} // namespace applications
