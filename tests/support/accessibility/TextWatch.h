// Hears which texts come into fields and go from them, as a screen reader does. One thread.
#pragma once

#include "accessibility/Node.h"

#include <memory>
#include <string>
#include <vector>

namespace accessibility {

class TextWatch
{
public:
    struct Change
    {
        std::string kind; // "insert" or "delete"
        std::string text;
    };

    /// Programs that start from here on are heard of.
    explicit TextWatch(const std::string& busAddress);

    /// All that was told so far, oldest first.
    [[nodiscard]] const std::vector<Change>& changes();

private:
    static int noticed(sd_bus_message* message, void* changes, sd_bus_error* error);

    std::unique_ptr<std::vector<Change>> told; // where it is known to the bus
    Node::Bus bus;
};

} // namespace accessibility
