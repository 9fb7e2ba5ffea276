// An object that this program offers on a bus: properties to read and methods to call, of one
// interface. What callers do wrong is answered as an error. Main thread.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>
#include <QVariantList>
#include <QVariantMap>

#include <functional>
#include <map>

namespace statusnotifier {

class BusObject : public QDBusVirtualObject
{
public:
    /// `description` is the interface's XML.
    BusObject(QString interface, QString path, QString description);

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

protected:
    /// Takes the arguments, gives the results.
    using Method = std::function<QVariantList(const QVariantList& arguments)>;

    void addMethod(const QString& name, Method method);

    virtual QVariantMap properties() const = 0;

    /// To be sent on a connection.
    QDBusMessage signal(const QString& name) const;

private:
    QDBusMessage answerTo(const QDBusMessage& message) const;
    QDBusMessage readProperties(const QDBusMessage& message) const;

    QString interface;
    QString path;
    QString description;
    std::map<QString, Method> methods;
};

} // namespace statusnotifier
