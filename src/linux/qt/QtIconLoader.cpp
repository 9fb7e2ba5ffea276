#include "linux/qt/QtIconLoader.h"

#include "toolkit/QtIcon.h"

#include <QFileInfo>
#include <QIcon>

#include <algorithm>
#include <array>

namespace qt {

namespace {

/// More than any honest icon has; a larger file would hold up the lock while it is decoded.
constexpr qint64 LARGEST_FILE = 4LL * 1024 * 1024;

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

QIcon fromFile(const QString& path)
{
    const QFileInfo file(path);
    if (!file.isFile() || file.size() > LARGEST_FILE) { // a pipe would be waited for
        return {};
    }
    QIcon icon(path);
    return icon.pixmap(QSize(16, 16)).isNull() ? QIcon() : icon;
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

QIcon find(const QString& nameOrPath)
{
    QIcon icon;
    if (nameOrPath.startsWith('/')) {
        icon = fromFile(nameOrPath);
    } else if (!nameOrPath.isEmpty() && !nameOrPath.contains('/')) {
        icon = QIcon::fromTheme(nameOrPath);
        if (icon.isNull()) {
            icon = QIcon::fromTheme(withoutSuffix(nameOrPath));
        }
    }
    return icon.isNull() ? QIcon::fromTheme("application-x-executable") : icon;
}

} // namespace

QtIconLoader::QtIconLoader()
{
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
    return std::make_shared<toolkit::QtIcon>([name = QString::fromStdString(nameOrPath)] {
        return find(name);
    });
}

} // namespace qt
