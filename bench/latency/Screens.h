// Watches the pixels of all screens from outside, often enough to see what flashes up.
#pragma once

#include "desktop/Desktop.h"
#include "desktop/Framebuffer.h"

#include <vector>

namespace latency {

class Screens
{
public:
    explicit Screens(desktop::Desktop& desk);

    /// Keeps what is seen now as what is seen while nothing happens.
    void remember();

    /// All looked at, outside the controls of a lock, is of the lock's colour.
    [[nodiscard]] bool areCovered() const;

    /// The second screen shows something that is neither the lock nor what was there before.
    [[nodiscard]] bool showSomethingElse() const;

    /// What is seen is what was remembered.
    [[nodiscard]] bool areAsBefore() const;

private:
    /// Rows are looked at with this distance: no window of an application fits in between.
    static constexpr int ROW_DISTANCE = 24;

    [[nodiscard]] bool rowIsCovered(int y) const;

    /// `test` is given what is seen and what was remembered.
    template <typename Test>
    [[nodiscard]] bool anyPixelOf(desktop::Rectangle area, Test test) const;

    desktop::Framebuffer framebuffer;
    desktop::Rectangle whole;
    desktop::Rectangle second;
    desktop::Rectangle controls;
    std::vector<desktop::Pixel> before; // row by row
};

} // namespace latency
