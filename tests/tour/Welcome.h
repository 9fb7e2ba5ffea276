// From an empty home to a password and a protected application.
#pragma once

#include "tour/Stage.h"
#include "tour/Steps.h"

#include <string>

namespace tour {

class Welcome
{
public:
    explicit Welcome(Stage& stage) : stage(stage) {}

    void carryOut(Steps& steps);

private:
    std::string startAgent();
    std::string openPasswordWindow();
    std::string typePassword();
    std::string passTheGate();
    std::string openPicker();
    std::string pickApplication();

    Stage& stage;
};

} // namespace tour
