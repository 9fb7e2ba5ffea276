// The links that a path leads through: where it leads changes when one of them is turned. Any
// thread may call.
#pragma once

#include <string>
#include <vector>

namespace xdg {

struct LinkPlace
{
    std::string folder; // in which the link stands, free of links itself
    std::string name;

    friend bool operator==(const LinkPlace&, const LinkPlace&) = default;
};

/// In the order in which they are followed; those before what is missing, where something is.
std::vector<LinkPlace> linkPlaces(const std::string& path);

} // namespace xdg
