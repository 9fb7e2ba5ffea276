// Bounces a view below its resting place and back, twice: 0.1 s down and 0.1 s up, easing in and
// out each way. The resting place is where the layout has put the view; it may change meanwhile,
// and the view ends there.
#pragma once

#include <QSequentialAnimationGroup>
#include <QWidget>

namespace toolkit {

class BounceAnimation
{
public:
    /// `view` is in a layout, and outlives this.
    explicit BounceAnimation(QWidget& view);

    /// Starts over when it runs already. `depth` is in the view's pixels.
    void start(int depth);

private:
    void addLeg(double from, double to);
    void place(double part);

    /// Has the layout put the view where it belongs.
    void settle();

    QWidget& view;
    int depth = 0;
    int restingPlace = 0;
    QSequentialAnimationGroup animation; // the view's child "position"
};

} // namespace toolkit
