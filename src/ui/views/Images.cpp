#include "ui/views/Images.h"

#include "platform/Fatal.h"

#include <QFile>

namespace ui {

QString imagePath(const QString& name)
{
    return QStringLiteral(":/images/%1.svg").arg(name);
}

QIcon imageNamed(const QString& name)
{
    const QString path = imagePath(name);
    return QFile::exists(path) ? QIcon(path) : QIcon();
}

QIcon requiredImage(const QString& name)
{
    QIcon image = imageNamed(name);
    if (image.isNull()) {
        platform::fatal("there is no image " + name.toStdString());
    }
    return image;
}

} // namespace ui
