#include "linux/statusnotifier/BusObject.h"

#include <QDBusError>
#include <QDBusVariant>

#include <utility>

namespace statusnotifier {

namespace {

constexpr auto PROPERTIES = "org.freedesktop.DBus.Properties";

bool isForProperties(const QDBusMessage& message)
{
    return message.interface() == PROPERTIES;
}

} // namespace

BusObject::BusObject(QString interface, QString path, QString description)
    : interface(std::move(interface)),
      path(std::move(path)),
      description(std::move(description))
{
}

QString BusObject::introspect(const QString& askedPath) const
{
    return askedPath == path ? description : QString();
}

bool BusObject::handleMessage(const QDBusMessage& message, const QDBusConnection& connection)
{
    const bool ours = message.interface().isEmpty() || message.interface() == interface ||
                      isForProperties(message);
    if (message.path() != path || !ours) {
        return false; // the toolkit knows the interfaces that every object has
    }
    const QDBusMessage answer = answerTo(message);
    if (message.isReplyRequired()) {
        connection.send(answer);
    }
    return true;
}

void BusObject::addMethod(const QString& name, Method method)
{
    methods[name] = std::move(method);
}

QDBusMessage BusObject::signal(const QString& name) const
{
    return QDBusMessage::createSignal(path, interface, name);
}

QDBusMessage BusObject::answerTo(const QDBusMessage& message) const
{
    if (isForProperties(message)) {
        return readProperties(message);
    }
    const auto found = methods.find(message.member());
    return found != methods.end()
               ? message.createReply(found->second(message.arguments()))
               : message.createErrorReply(QDBusError::UnknownMethod, "there is no such method");
}

QDBusMessage BusObject::readProperties(const QDBusMessage& message) const
{
    const QVariantMap values = properties();
    if (message.member() == QLatin1String("GetAll")) {
        return message.createReply(QVariant(values));
    }
    const QString name = message.arguments().value(1).toString();
    if (message.member() == QLatin1String("Get") && values.contains(name)) {
        return message.createReply(QVariant::fromValue(QDBusVariant(values[name])));
    }
    return message.createErrorReply(QDBusError::InvalidArgs, "there is no such property to read");
}

} // namespace statusnotifier
