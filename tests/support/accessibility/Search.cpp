#include "accessibility/Search.h"

#include "desktop/Failure.h"

#include <cstddef>

namespace accessibility {

namespace {

using Visitor = std::function<void(const Node&, std::size_t depth)>;

/// A program and its windows before they are mapped show nothing, but what is below may.
bool mayShow(const Node& node, std::size_t depth)
{
    return depth == 0 || node.is(State::Showing);
}

void visit(const Node& node, std::size_t depth, const Visitor& visitor)
{
    try {
        if (!mayShow(node, depth)) {
            return;
        }
        visitor(node, depth);
        for (const Node& child : node.children()) {
            visit(child, depth + 1, visitor);
        }
    } catch (const desktop::Failure&) {
        return; // it went away
    }
}

} // namespace

std::vector<Node> findAll(const Node& root, const Condition& condition)
{
    std::vector<Node> found;
    visit(root, 0, [&](const Node& node, std::size_t /*depth*/) {
        if (condition(node)) {
            found.push_back(node);
        }
    });
    return found;
}

std::vector<Node> findAll(const Node& root, const Wanted& wanted)
{
    return findAll(root, [&wanted](const Node& node) {
        return node.name() == wanted.name && node.is(wanted.role);
    });
}

std::optional<Node> find(const Node& root, const Wanted& wanted)
{
    const std::vector<Node> found = findAll(root, wanted);
    return found.empty() ? std::nullopt : std::optional(found.front());
}

std::string describe(const Node& root)
{
    std::string text;
    visit(root, 0, [&text](const Node& node, std::size_t depth) {
        const desktop::Rectangle place = depth == 0 ? desktop::Rectangle{} : node.place();
        text += std::string(2 * depth, ' ') + node.roleName() + " \"" + node.name() + "\"" +
                (node.is(State::Focused) ? " focused" : "") +
                (node.is(State::Checked) ? " checked" : "") + " " + std::to_string(place.width) +
                "x" + std::to_string(place.height) + "+" + std::to_string(place.x) + "+" +
                std::to_string(place.y) + "\n";
    });
    return text;
}

} // namespace accessibility
