// How the lock window looks: its colours, and its measures on a screen of a given size. Measures
// are in points; a point is a pixel up to a height of 1080 and grows from there, so that the lock
// looks the same on a screen of twice the resolution.
#pragma once

#include <QIcon>
#include <QPixmap>
#include <QSize>

namespace Ui { // NOLINT(readability-identifier-naming): the generator's name
class PasswordWindow;
}

namespace locking {

class PasswordWindowStyle
{
public:
    /// For a window of `size`, in the toolkit's pixels.
    explicit PasswordWindowStyle(const QSize& size);

    void apply(const Ui::PasswordWindow& ui) const;

    /// The icon at its size in the window, or a padlock for a null one.
    QPixmap picture(const QIcon& icon, double devicePixelRatio) const;

    int bounceDepth() const;

private:
    int pixels(double points) const;

    QSize size;
    double scale;
};

} // namespace locking
