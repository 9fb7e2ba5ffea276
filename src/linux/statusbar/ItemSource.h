// The item that a status area shows. It outlives its showing, and what it calls in answer it calls
// later. Main thread only.
#pragma once

#include "platform/Port.h"
#include "platform/StatusBar.h"

#include <cstddef>
#include <vector>

namespace statusbar {

class ItemSource : public platform::Port
{
public:
    /// Asked at every drawing.
    virtual platform::StatusItemLook look() = 0;

    virtual const std::vector<platform::StatusMenuEntry>& menu() const = 0;

    virtual void activate() = 0;

    /// An entry of the menu was chosen; one that is not there any more is ignored.
    virtual void choose(std::size_t entry) = 0;
};

} // namespace statusbar
