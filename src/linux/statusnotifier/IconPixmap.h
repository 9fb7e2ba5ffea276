// Values of the status notifier protocol as they travel on the bus.
#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QImage>
#include <QList>
#include <QMetaType>
#include <QString>

namespace statusnotifier {

/// (iiay): a picture; its bytes are alpha, red, green, blue of each pixel, not premultiplied.
struct IconPixmap
{
    int width = 0;
    int height = 0;
    QByteArray bytes;

    static IconPixmap of(const QImage& image);
};

using IconPixmaps = QList<IconPixmap>;

/// (sa(iiay)ss)
struct ToolTip
{
    QString iconName;
    IconPixmaps icons;
    QString title;
    QString text;
};

QDBusArgument& operator<<(QDBusArgument& argument, const IconPixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& argument, IconPixmap& pixmap);
QDBusArgument& operator<<(QDBusArgument& argument, const ToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& argument, ToolTip& toolTip);

} // namespace statusnotifier

Q_DECLARE_METATYPE(statusnotifier::IconPixmap)
Q_DECLARE_METATYPE(statusnotifier::ToolTip)
