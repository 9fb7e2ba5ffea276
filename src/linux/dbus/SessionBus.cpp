#include "linux/dbus/SessionBus.h"

#include "linux/dbus/BusAnswers.h"
#include "linux/dbus/Within.h"
#include "linux/process/Aside.h"
#include "platform/Call.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QMetaObject>

#include <condition_variable>
#include <mutex>
#include <optional>
#include <utility>

namespace dbus {

/// Shared by both threads, of which either may end first.
struct SessionBus::Attempt
{
    QString address;
    QString name;
    QString formerName;
    SessionBus* owner = nullptr; // main thread; none once it is gone or has the result

    std::mutex mutex; // guards what follows
    std::condition_variable done;
    std::optional<QDBusConnection> made;
};

namespace {

constexpr std::chrono::seconds LAST_WAIT(1);

QString nextName()
{
    static int count = 0;
    return QStringLiteral("tarvel-%1").arg(++count);
}

QDBusConnection none()
{
    return QDBusConnection(QString());
}

} // namespace

SessionBus::SessionBus(const std::string& address)
    : address(QString::fromStdString(address)),
      current(none())
{
}

SessionBus::~SessionBus()
{
    if (attempt) {
        attempt->owner = nullptr;
        // The toolkit may be gone soon, and the thread is not to outlive that.
        std::unique_lock lock(attempt->mutex);
        attempt->done.wait_for(lock, LAST_WAIT, [this] { return attempt->made.has_value(); });
        attempt->made = none();
    }
    current = none();
    if (!name.isEmpty()) {
        QDBusConnection::disconnectFromBus(name);
    }
}

void SessionBus::connectLater()
{
    if (attempt || current.isConnected()) {
        return;
    }
    attempt = std::make_shared<Attempt>();
    attempt->address = address;
    attempt->formerName = std::exchange(name, nextName());
    attempt->name = name;
    attempt->owner = this;
    current = none();
    waited = false;
    if (!process::runAside([shared = attempt] { run(shared); })) {
        // As without a bus, until the next time that it is needed.
        name = attempt->formerName;
        attempt.reset();
    }
}

QDBusConnection SessionBus::connection(std::chrono::milliseconds patience)
{
    connectLater();
    if (attempt && !std::exchange(waited, true)) {
        std::unique_lock lock(attempt->mutex);
        attempt->done.wait_for(lock, patience, [this] { return attempt->made.has_value(); });
    }
    takeResult();
    return current;
}

void SessionBus::takeResult()
{
    if (!attempt) {
        return;
    }
    {
        const std::lock_guard lock(attempt->mutex);
        if (!attempt->made.has_value()) {
            return;
        }
        current = *attempt->made;
        attempt->made = none(); // a copy would keep the connection after this object's end
    }
    attempt->owner = nullptr;
    attempt.reset();
    if (current.isConnected()) {
        platform::call(onConnected, current);
    }
}

void SessionBus::run(const std::shared_ptr<Attempt>& attempt)
{
    QDBusConnection::disconnectFromBus(attempt->formerName);
    QDBusConnection made = busAnswers(attempt->address.toStdString())
                               ? QDBusConnection::connectToBus(attempt->address, attempt->name)
                               : none();
    const auto tell = [attempt] {
        if (attempt->owner != nullptr) {
            attempt->owner->takeResult();
        }
    };
    {
        // Last of all, and at once: whoever has the result may end the toolkit.
        const std::lock_guard lock(attempt->mutex);
        if (QCoreApplication* application = QCoreApplication::instance()) {
            QMetaObject::invokeMethod(application, tell, Qt::QueuedConnection);
        }
        attempt->made = std::exchange(made, none());
    }
    attempt->done.notify_all();
}

std::string sessionBusAddress()
{
    std::string named = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS").toStdString();
    if (!named.empty()) {
        return named;
    }
    const QString usual = qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus");
    return QFileInfo::exists(usual) ? "unix:path=" + usual.toStdString() : std::string();
}

QDBusMessage
callWithin(std::chrono::milliseconds time, const QDBusConnection& bus, const QDBusMessage& call)
{
    // The bus library's own limit counts only while its thread is not held up.
    const auto ask = [time, bus, call] {
        return bus.call(call, QDBus::Block, static_cast<int>(time.count()));
    };
    if (const std::optional<QDBusMessage> answer = within(time, ask)) {
        return *answer;
    }
    return QDBusMessage::createError(QDBusError(QDBusError::NoReply, QString()));
}

} // namespace dbus
