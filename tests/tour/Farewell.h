// The popover once more, with its gate, and the end of the agent by its own command alone.
#pragma once

#include "tour/Stage.h"
#include "tour/Steps.h"

#include <string>

namespace tour {

class Farewell
{
public:
    explicit Farewell(Stage& stage) : stage(stage) {}

    void carryOut(Steps& steps);

private:
    std::string openPopover();
    std::string tryWrongPassword();
    std::string passTheGate();
    std::string quit();
    std::string quitOnceMore();

    void enterAtGate(const std::string& password);
    void chooseQuit();
    bool hasEnded();

    Stage& stage;
};

} // namespace tour
