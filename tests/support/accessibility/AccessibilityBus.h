// What assistive tools use on a desktop: their bus and its registry, on a private session bus.
// Programs that start while the object lives, and that show themselves to assistive tools, are seen
// here. One thread.
#pragma once

#include "accessibility/Node.h"
#include "desktop/ChildProcess.h"
#include "desktop/Desktop.h"

#include <memory>
#include <string>
#include <vector>

namespace accessibility {

class AccessibilityBus
{
public:
    /// Returns when programs can come; throws `desktop::Failure` when it does not come to that.
    explicit AccessibilityBus(desktop::Desktop& desktop);

    [[nodiscard]] const std::string& address() const { return busAddress; }

    /// The programs that show themselves, oldest first. None is no failure.
    [[nodiscard]] std::vector<Node> programs() const;

private:
    [[nodiscard]] bool hasRegistry() const;

    desktop::ChildProcess launcher;
    std::string busAddress;
    Node::Bus bus;
};

} // namespace accessibility
