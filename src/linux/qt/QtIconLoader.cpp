#include "linux/qt/QtIconLoader.h"

#include "linux/qt/LargePicture.h"
#include "toolkit/QtIcon.h"

#include <QFileInfo>
#include <QIcon>
#include <QImageReader>

#include <algorithm>
#include <array>

namespace qt {

namespace {

/// More than any honest icon has; a larger file would hold up the lock while it is decoded.
constexpr qint64 LARGEST_FILE = 4LL * 1024 * 1024;

/// In pixels and, at eight bytes each at most, in megabytes.
constexpr qint64 LARGEST_PICTURE = 1024LL * 1024;
constexpr int LARGEST_ALLOCATION = 8;

/// Is decoded in a millisecond or two.
constexpr qint64 SMALL_PICTURE = 256LL * 256;

constexpr std::array FALLBACK_THEMES{
    "Adwaita", "breeze", "Papirus", "elementary", "Tango", "gnome"};
/// Looked into anyway; as a fallback it only says that the desktop names none.
constexpr auto LAST_THEME = "hicolor";

constexpr std::array FILE_SUFFIXES{".png", ".svg", ".xpm"};

bool isInstalled(const QString& theme)
{
    const QStringList folders = QIcon::themeSearchPaths();
    return std::any_of(folders.begin(), folders.end(), [&theme](const QString& folder) {
        return QFileInfo::exists(folder + '/' + theme + "/index.theme");
    });
}

QIcon generalIcon()
{
    return QIcon::fromTheme("application-x-executable");
}

/// Nothing where nothing would be drawn.
QIcon drawable(const QIcon& icon)
{
    const QSize usual(32, 32);
    return icon.pixmap(usual).isNull() ? QIcon() : icon;
}

QIcon fromFile(const QString& path, platform::DispatchQueues& queues)
{
    const QFileInfo file(path);
    if (!file.isFile() || file.size() > LARGEST_FILE) { // a pipe would be waited for
        return {};
    }
    const QImageReader reader(path);
    const QSize size = reader.size();
    const qint64 pixels = qint64(size.width()) * size.height();
    if (!reader.format().startsWith("svg") && size.isValid() && pixels > SMALL_PICTURE) {
        return pixels > LARGEST_PICTURE ? QIcon()
                                        : QIcon(new LargePicture(path, generalIcon(), queues));
    }
    return drawable(QIcon(path));
}

/// Entries often name a file of the theme where the name alone is meant.
QString withoutSuffix(QString name)
{
    for (const char* suffix : FILE_SUFFIXES) {
        if (name.endsWith(QLatin1String(suffix))) {
            name.chop(4);
            break;
        }
    }
    return name;
}

QIcon find(const QString& nameOrPath, platform::DispatchQueues& queues)
{
    QIcon icon;
    if (nameOrPath.startsWith('/')) {
        icon = fromFile(nameOrPath, queues);
    } else if (!nameOrPath.isEmpty() && !nameOrPath.contains('/')) {
        icon = drawable(QIcon::fromTheme(nameOrPath));
        if (icon.isNull()) {
            icon = drawable(QIcon::fromTheme(withoutSuffix(nameOrPath)));
        }
    }
    return icon.isNull() ? generalIcon() : icon;
}

} // namespace

QtIconLoader::QtIconLoader(platform::DispatchQueues& queues) : queues(queues)
{
    QImageReader::setAllocationLimit(LARGEST_ALLOCATION); // holds for what a theme has as well
    const QString present = QIcon::fallbackThemeName();
    if (!present.isEmpty() && present != LAST_THEME) {
        return;
    }
    for (const char* theme : FALLBACK_THEMES) {
        if (isInstalled(theme)) {
            QIcon::setFallbackThemeName(theme);
            return;
        }
    }
}

platform::IconHandle QtIconLoader::load(const std::string& nameOrPath) const
{
    return std::make_shared<toolkit::QtIcon>([name = QString::fromStdString(nameOrPath),
                                              &queues = queues] { return find(name, queues); });
}

} // namespace qt
