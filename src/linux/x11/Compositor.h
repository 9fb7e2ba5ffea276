// Whether somebody composes the screen's picture from whole windows, so that translucent ones let
// through what lies below them. Used by the thread of its connection.
#pragma once

#include "linux/x11/Connection.h"

namespace x11 {

class Compositor
{
public:
    /// `connection` must outlive this.
    explicit Compositor(const Connection& connection);

    bool isRunning() const;

private:
    const Connection& connection;
    xcb_atom_t selection; // that one owns while it runs
};

} // namespace x11
