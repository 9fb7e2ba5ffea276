// Starts that find their program running, leave the work to it and end. Main thread.
#pragma once

#include "linux/workspace/InstanceList.h"
#include "linux/workspace/Questions.h"
#include "linux/workspace/Sighting.h"

namespace workspace {

class HandOver
{
public:
    /// Both must outlive this.
    HandOver(const InstanceList& list, const Questions& ask) : list(list), ask(ask) {}

    /// The instance that may have taken over such a start: the latest one of the application before
    /// it. Empty when there is none.
    InstancePtr receiverOf(const Instance& instance) const;

    /// The start may have handed over to a process that runs as another application of the same
    /// program: it is that one's guest from now on. False, and nothing changed, when it cannot.
    bool becomesGuest(Instance& instance) const;

    /// True when the process is part of another application that may show such windows, too.
    bool isGuest(const Sighting& sighting) const;

private:
    InstancePtr hostOf(const Instance& instance) const;

    const InstanceList& list;
    const Questions& ask;
};

} // namespace workspace
