// Tells when the toolkit has learned of screens that came or moved, which may be later than the
// desktop reports it. Main thread only; quiet after its end.
#pragma once

#include <QObject>

#include <functional>

class QScreen;

namespace locking {

class ScreenFollower
{
public:
    explicit ScreenFollower(std::function<void()> onChange);

private:
    void follow(const QScreen* screen);

    std::function<void()> onChange;
    QObject context; // of the connections
};

} // namespace locking
