// The absence of an interface: the agent locks, and has nothing to show beside its locks.
#pragma once

#include "app/InterfaceHub.h"

namespace app {

class NoInterfaceHub final : public InterfaceHub
{
public:
    void present() override {}

    void showPopover() override {}
};

} // namespace app
