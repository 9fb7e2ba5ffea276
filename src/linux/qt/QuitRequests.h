// Requests to quit that reach a graphical program: the toolkit's own and the session manager's.
// Main thread.
#pragma once

#include <QObject>

#include <functional>

class QGuiApplication;

namespace qt {

class QuitRequests final : public QObject
{
public:
    /// Asks `mayQuit` at every request; while it says no, the request is refused.
    QuitRequests(QGuiApplication& application, std::function<bool()> mayQuit);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::function<bool()> mayQuit;
};

} // namespace qt
