// Hears where the keyboard goes, as a screen reader does. Things that no tree of windows leads to,
// entries of a pop-up menu above all, are known by this alone. One thread.
#pragma once

#include "accessibility/Node.h"

#include <optional>
#include <string>

namespace accessibility {

class FocusWatch
{
public:
    /// Programs that start from here on are heard of.
    explicit FocusWatch(const std::string& busAddress);

    /// What got the keyboard last.
    [[nodiscard]] std::optional<Node> last();

private:
    struct Listener
    {
        Node::Bus bus;
        std::optional<Node> last;
    };

    static int noticed(sd_bus_message* message, void* listener, sd_bus_error* error);

    std::unique_ptr<Listener> listener; // where it is known to the bus
};

} // namespace accessibility
