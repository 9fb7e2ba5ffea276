// One thing that a program shows to assistive tools: a window, a button, a text. It stands for the
// thing as long as that is there; afterwards every question throws `desktop::Failure`. One thread.
#pragma once

#include "accessibility/Role.h"
#include "accessibility/State.h"
#include "desktop/BusConnection.h"
#include "desktop/Rectangle.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace accessibility {

class Node
{
public:
    using Bus = std::shared_ptr<const desktop::BusConnection>;

    Node(Bus bus, std::string peer, std::string path);

    [[nodiscard]] std::string name() const;
    [[nodiscard]] std::string description() const;
    [[nodiscard]] bool is(Role role) const;
    [[nodiscard]] bool is(State state) const;

    /// For a person: "push button".
    [[nodiscard]] std::string roleName() const;

    [[nodiscard]] std::vector<Node> children() const;
    [[nodiscard]] Node parent() const;

    /// In pixels of the toolkit, which are those of the screen where it is not scaled.
    [[nodiscard]] desktop::Rectangle place() const;

    /// What is written in a field, as far as it is shown to assistive tools.
    [[nodiscard]] std::string text() const;

    /// How many characters are in a field, a password field too.
    [[nodiscard]] std::size_t characters() const;

    /// Does its first action, such as pressing a button.
    void act() const;

    /// Asks for the keyboard; false where it is refused.
    [[nodiscard]] bool takeFocus() const;

    friend bool operator==(const Node& one, const Node& other)
    {
        return one.peer == other.peer && one.path == other.path;
    }

private:
    using Reader = std::function<void(sd_bus_message*)>;
    using Writer = std::function<void(sd_bus_message*)>;

    void call(
        const std::string& interface,
        const std::string& member,
        const Writer& write,
        const Reader& read
    ) const;
    void property(const std::string& interface, const std::string& name, const Reader& read) const;

    Bus bus;
    std::string peer;
    std::string path;
};

} // namespace accessibility
