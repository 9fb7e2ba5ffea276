// Looks for things that a program shows. What goes away during the search counts as not there.
#pragma once

#include "accessibility/Node.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace accessibility {

/// What the thing is and how it is called.
struct Wanted
{
    Role role;
    std::string name;
};

using Condition = std::function<bool(const Node&)>;

/// What holds for the condition and shows on the screen, at `root` or below, in the order in which
/// it would be read out. Below things that do not show nothing is looked for.
std::vector<Node> findAll(const Node& root, const Condition& condition);
std::vector<Node> findAll(const Node& root, const Wanted& wanted);

/// The first of them.
std::optional<Node> find(const Node& root, const Wanted& wanted);

/// For a person: all that shows, a line each.
std::string describe(const Node& root);

} // namespace accessibility
