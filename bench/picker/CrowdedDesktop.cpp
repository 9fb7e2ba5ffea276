#include "picker/CrowdedDesktop.h"

#include "linux/xdg/Roles.h"

#include <QColor>
#include <QImage>

#include <array>
#include <filesystem>
#include <fstream>
#include <string_view>

namespace picker {

namespace {

namespace fs = std::filesystem;

constexpr std::array THEME_ICONS{
    "accessories-calculator",
    "accessories-text-editor",
    "applications-games",
    "folder",
    "help-browser",
    "multimedia-volume-control",
    "system-file-manager",
    "utilities-terminal",
    "web-browser",
    "x-office-calendar",
    "x-office-spreadsheet",
    "user-trash"};

constexpr std::array WORDS{
    "Atlas",
    "Bibliothèque",
    "Calculator",
    "Disks",
    "Editor",
    "Écran",
    "Films",
    "Games",
    "Images",
    "Journal",
    "Музыка",
    "Notes",
    "Office",
    "Player",
    "写真",
    "Terminal"};

constexpr auto PICTURE =
    R"svg(<svg xmlns="http://www.w3.org/2000/svg" width="64" height="64" viewBox="0 0 64 64">
<defs><linearGradient id="g" x1="0" y1="0" x2="0" y2="1"><stop offset="0" stop-color="#68a0e8"/>
<stop offset="1" stop-color="#2a5298"/></linearGradient></defs>
<rect x="4" y="4" width="56" height="56" rx="12" fill="url(#g)"/>
<path d="M16 44c8-24 24-24 32 0z" fill="#fff" opacity="0.8"/><circle cx="44" cy="20" r="6" fill="#ffd"/>
</svg>
)svg";

template <std::size_t SIZE> std::string pick(const std::array<const char*, SIZE>& list, int number)
{
    return list.at(static_cast<std::size_t>(number) % SIZE);
}

} // namespace

CrowdedDesktop::CrowdedDesktop(int applications)
{
    write(applications);
    catalogue = std::make_unique<xdg::ApplicationCatalogue>(
        environment(), xdg::Roles::shipped(), [](std::string_view) {}
    );
    bundles = std::make_unique<xdg::XdgBundles>(*catalogue);
    fileManager = std::make_unique<xdg::XdgFileManager>(*catalogue);
    fake.workspace.loadIcon = [this](const std::string& path) { return iconForFile(path); };
    platform = std::make_unique<platform::Platform>(platform::Platform{
        .application = fake.application,
        .bundles = *bundles,
        .dispatchQueues = queues,
        .distributedNotifications = fake.distributedNotifications,
        .eventMonitors = fake.eventMonitors,
        .fileManager = *fileManager,
        .keyboardStatus = fake.keyboardStatus,
        .keychainItems = fake.keychainItems,
        .log = fake.log,
        .loginItems = fake.loginItems,
        .processInfo = fake.processInfo,
        .screens = fake.screens,
        .statusBar = fake.statusBar,
        .timers = fake.timers,
        .userDefaults = fake.userDefaults,
        .userNotifications = fake.userNotifications,
        .windows = fake.windows,
        .workspace = fake.workspace,
    });
    platform::install(platform.get());
}

CrowdedDesktop::~CrowdedDesktop()
{
    platform::install(nullptr);
}

void CrowdedDesktop::write(int applications) const
{
    const fs::path root = home.path().toStdString();
    const fs::path entries = root / "applications";
    fs::create_directories(entries);
    fs::create_directories(root / "pictures");
    writeLargePicture();
    for (int number = 0; number < applications; ++number) {
        const std::string id = "application" + std::to_string(number);
        const std::string icon = iconName(number);
        if (icon.ends_with(".svg")) {
            std::ofstream(icon) << PICTURE;
        }
        std::ofstream(entries / (id + ".desktop"))
            << "[Desktop Entry]\nType=Application\nName=" << pick(WORDS, number) << ' ' << number
            << "\nIcon=" << icon << "\nExec=/bin/true " << id << '\n';
    }
}

QString CrowdedDesktop::largePicture() const
{
    return home.path() + "/pictures/large.png";
}

/// Hardly any two neighbouring pixels are alike, so that there is much to decode.
void CrowdedDesktop::writeLargePicture() const
{
    constexpr int SIDE = 1024;
    constexpr int HUES = 360;
    QImage image(SIDE, SIDE, QImage::Format_ARGB32);
    for (int y = 0; y < SIDE; ++y) {
        for (int x = 0; x < SIDE; ++x) {
            image.setPixelColor(x, y, QColor::fromHsv((x * x + y * 7) % HUES, 200, 150 + y % 100));
        }
    }
    image.save(largePicture());
}

std::string CrowdedDesktop::iconName(int number) const
{
    constexpr int BETWEEN_LARGE = 40;
    if (number % BETWEEN_LARGE == 1) {
        return largePicture().toStdString();
    }
    constexpr int KINDS = 3;
    switch (number % KINDS) {
    case 0:
        return pick(THEME_ICONS, number / KINDS);
    case 1:
        return home.path().toStdString() + "/pictures/" + std::to_string(number) + ".svg";
    default:
        return "no-theme-has-this-" + std::to_string(number);
    }
}

xdg::XdgEnvironment CrowdedDesktop::environment() const
{
    xdg::XdgEnvironment result = xdg::XdgEnvironment::fromProcess();
    result.dataFolders = {home.path().toStdString()};
    return result;
}

platform::IconHandle CrowdedDesktop::iconForFile(const std::string& path)
{
    const std::optional<std::string> id = xdg::idOfBundlePath(path);
    const std::shared_ptr<const xdg::Catalogue> current = catalogue->current();
    const xdg::InstalledApplication* application = id ? current->find(*id) : nullptr;
    return icons.load(application != nullptr ? application->entry.icon : std::string());
}

} // namespace picker
