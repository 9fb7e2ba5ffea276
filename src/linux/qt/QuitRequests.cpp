#include "linux/qt/QuitRequests.h"

#include <QEvent>
#include <QGuiApplication>
#include <QSessionManager>

#include <utility>

namespace qt {

QuitRequests::QuitRequests(QGuiApplication& application, std::function<bool()> mayQuit)
    : mayQuit(std::move(mayQuit))
{
    application.installEventFilter(this);
    connect(
        &application,
        &QGuiApplication::commitDataRequest,
        this,
        [this](QSessionManager& manager) {
            if (!this->mayQuit()) {
                manager.cancel();
            }
        },
        Qt::DirectConnection
    );
}

bool QuitRequests::eventFilter(QObject* watched, QEvent* event)
{
    const bool refused = event->type() == QEvent::Quit && !mayQuit();
    if (refused) {
        event->ignore();
    }
    return refused || QObject::eventFilter(watched, event);
}

} // namespace qt
