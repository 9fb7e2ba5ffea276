// Carries out steps one after another and says each in one line with its time. After one that did
// not hold the others are left out.
#pragma once

#include <functional>
#include <string>

namespace tour {

class Steps
{
public:
    /// What happened, in a few words; throws `desktop::Failure` when the step did not hold.
    using Action = std::function<std::string()>;

    void carryOut(const std::string& name, const Action& action);

    [[nodiscard]] bool allHeld() const { return held; }

private:
    bool held = true;
};

} // namespace tour
