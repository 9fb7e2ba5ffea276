#include "linux/statusnotifier/IconPixmap.h"

#include <QtEndian>

namespace statusnotifier {

IconPixmap IconPixmap::of(const QImage& image)
{
    const QImage plain = image.convertToFormat(QImage::Format_ARGB32);
    IconPixmap pixmap{plain.width(), plain.height(), {}};
    const qsizetype pixelsPerRow = plain.width();
    constexpr qsizetype BYTES_PER_PIXEL = 4;
    pixmap.bytes.resize(pixelsPerRow * plain.height() * BYTES_PER_PIXEL);
    char* row = pixmap.bytes.data();
    for (int y = 0; y < plain.height(); ++y, row += pixelsPerRow * BYTES_PER_PIXEL) {
        qToBigEndian<quint32>(plain.constScanLine(y), pixelsPerRow, row);
    }
    return pixmap;
}

QDBusArgument& operator<<(QDBusArgument& argument, const IconPixmap& pixmap)
{
    argument.beginStructure();
    argument << pixmap.width << pixmap.height << pixmap.bytes;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, IconPixmap& pixmap)
{
    argument.beginStructure();
    argument >> pixmap.width >> pixmap.height >> pixmap.bytes;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const ToolTip& toolTip)
{
    argument.beginStructure();
    argument << toolTip.iconName << toolTip.icons << toolTip.title << toolTip.text;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, ToolTip& toolTip)
{
    argument.beginStructure();
    argument >> toolTip.iconName >> toolTip.icons >> toolTip.title >> toolTip.text;
    argument.endStructure();
    return argument;
}

} // namespace statusnotifier
