#include "screenshots/Gallery.h"

#include "desktop/Backdrop.h"
#include "desktop/Pixels.h"
#include "desktop/TemporaryFolder.h"
#include "desktop/WindowFrames.h"
#include "person/Screens.h"

#include <array>
#include <cstdint>
#include <utility>
#include <vector>

namespace screenshots {

namespace screens = person::screens;
using desktop::Rectangle;

namespace {

constexpr int WIDTH = 1280;
constexpr int HEIGHT = 800;
constexpr int TITLE_HEIGHT = 24;
constexpr int EDGE = 24; // of the screen, where only the lock is

constexpr desktop::Pixel LIGHT_DESKTOP = 0x9DB4C6;
constexpr desktop::Pixel DARK_DESKTOP = 0x1D2B36;

/// What is offered where it is installed, so that pictures do not show all that a machine has.
constexpr std::array APPLICATIONS = {
    "debian-xterm",
    "firefox-esr",
    "galculator",
    "libreoffice-calc",
    "org.gnome.Calculator",
    "org.gnome.Characters",
    "org.gnome.Evince",
    "org.gnome.Meld",
    "org.gnome.seahorse.Application",
    "org.gnome.Terminal",
    "org.xfce.mousepad",
    "thunar",
};
constexpr std::array PROTECTED = {"Calculator", "Document Viewer", "Mousepad"};

desktop::Desktop::Parts partsOf(const Look& look)
{
    desktop::Desktop::Parts parts;
    parts.screens = {
        {0,
         0,
         static_cast<std::uint16_t>(WIDTH * look.scale),
         static_cast<std::uint16_t>(HEIGHT * look.scale)}};
    parts.windowManager = false; // comes when its look is known
    return parts;
}

} // namespace

Gallery::Gallery(std::filesystem::path wantedPictures, Look wantedLook)
    : look(wantedLook),
      session(partsOf(look)),
      user(session.desk)
{
    desktop::Desktop& desk = session.desk;
    desktop::styleWindowFrames(desk.home(), look.scale);
    desk.startWindowManager();
    desktop::paintBackdrop(desk.connection(), look.dark ? DARK_DESKTOP : LIGHT_DESKTOP);
    panel.emplace(
        desk,
        desktop::StatusPanel::Kind::SystemTray,
        look.dark ? desktop::StatusPanel::DARK : desktop::StatusPanel::LIGHT,
        look.scale
    );
    desk.environment["QT_SCALE_FACTOR"] = std::to_string(look.scale);
    offerApplications();
    camera.emplace(desk, user, *panel, std::move(wantedPictures), look);
}

void Gallery::offerApplications()
{
    const auto share = session.desk.home() / "share";
    std::filesystem::create_directories(share / "applications");
    for (const std::string application : APPLICATIONS) {
        const std::filesystem::path entry = "/usr/share/applications/" + application + ".desktop";
        if (std::filesystem::exists(entry)) {
            std::filesystem::copy_file(entry, share / "applications" / entry.filename());
        }
    }
    for (const std::string folder : {"icons", "pixmaps", "mime"}) {
        std::filesystem::create_directory_symlink("/usr/share/" + folder, share / folder);
    }
    session.desk.environment["XDG_DATA_DIRS"] = share.string();
}

void Gallery::takeAll()
{
    if (look.dark) {
        portal.emplace(session.desk.bus().address());
    }
    session.startAgent({});
    greet();
    setPassword();
    openContent();
    pickApplications();
    reopenContent();
    failToStartAtLogin();
    openMenu();
    showHelp();
    lock();
}

void Gallery::appearDark()
{
    if (portal) {
        portal->prefer(desktop::FakeSettingsPortal::Appearance::Dark);
    }
}

void Gallery::greet()
{
    user.waitFor(screens::NO_PASSWORD);
    appearDark();
    user.waitFor(person::window(screens::GREETING));
    user.focus(person::button("Set Up Password", screens::POPOVER));
    camera->takePopover("popover-no-password");
    clickTitleOf(screens::GREETING);
    user.waitForFocusOn(person::button("Set Up Password", screens::GREETING));
    camera->takeWindow("greeting", screens::GREETING);
}

void Gallery::setPassword()
{
    user.activate(person::button("Set Up Password", screens::GREETING));
    user.waitForFocusOn(screens::NEW_PASSWORD);
    user.waitForEndOf(person::window(screens::GREETING));
    camera->takeWindow("password", screens::PASSWORD_WINDOW);
    camera->takeItem("status-item");
    user.write(agent::PASSWORD, screens::NEW_PASSWORD);
    user.write("open sesam", screens::CONFIRMATION);
    user.activate(screens::CONFIRM);
    user.waitForFocusOn(screens::ALERT_BUTTON);
    camera->takeWindow("password-error", screens::PASSWORD_WINDOW);
    user.press(desktop::KEY_RETURN);
    user.write(agent::PASSWORD, screens::CONFIRMATION);
    user.activate(screens::CONFIRM);
    user.waitForFocusOn(screens::GATE);
    camera->takePopover("popover-gate");
}

void Gallery::openContent()
{
    user.type("open sesam");
    user.press(desktop::KEY_RETURN);
    user.waitUntil("the gate says no", [this] {
        return user.find(screens::GATE).description() == "Wrong password";
    });
    camera->takePopover("popover-wrong-password");
    user.type(agent::PASSWORD);
    user.press(desktop::KEY_RETURN);
    user.waitFor(screens::NOTHING_PROTECTED);
    camera->takePopover("popover-empty");
    camera->takeItem("status-item-open");
}

void Gallery::pickApplications()
{
    user.activate(screens::ADD);
    user.waitFor(screens::ADMINISTRATIVE);
    user.activate(screens::ADMINISTRATIVE);
    user.waitFor(person::row(PROTECTED.front(), screens::PICKER));
    camera->takeWindow("picker", screens::PICKER_TITLE);
    for (const std::string application : PROTECTED) {
        user.write(application, screens::FILTER);
        user.waitUntil("nothing else is offered", [&] {
            return user.rows() == std::vector<std::string>{application};
        });
        user.press(desktop::KEY_DOWN); // into the list
        user.press(desktop::KEY_RETURN);
        user.waitForEndOf(person::row(application, screens::PICKER));
    }
    user.write("te", screens::FILTER);
    user.waitFor(person::row("XTerm", screens::PICKER));
    camera->takeWindow("picker-filter", screens::PICKER_TITLE);
    user.write("solitaire", screens::FILTER);
    user.waitForEndOf(person::row("XTerm", screens::PICKER));
    camera->takeWindow("picker-no-match", screens::PICKER_TITLE);
    user.activate(screens::CLEAR_FILTER);
    user.activate(screens::ABOUT_RUNNING_ONLY);
    user.waitForFocusOn(screens::ALERT_BUTTON);
    camera->takeWindow("picker-help", screens::PICKER_TITLE);
    user.press(desktop::KEY_RETURN);
    user.waitForFocusOn(screens::OFFERED);
    user.press(desktop::KEY_ESCAPE);
    user.waitForEndOf(person::window(screens::PICKER));
}

void Gallery::reopenContent()
{
    user.clickAt(panel->firstItem());
    user.waitForFocusOn(screens::GATE);
    user.type(agent::PASSWORD);
    user.press(desktop::KEY_RETURN);
    user.waitFor(person::row(PROTECTED.front(), screens::POPOVER));
}

/// Where the folder of what starts at login should be, there is a file.
void Gallery::failToStartAtLogin()
{
    camera->takePopover("popover");
    const auto autostart = session.desk.home() / ".config/autostart";
    std::filesystem::remove_all(autostart);
    desktop::writeFile(autostart, "");
    user.activate(screens::START_AT_LOGIN);
    user.waitForFocusOn(screens::ALERT_BUTTON);
    camera->takeFocused("alert");
    user.press(desktop::KEY_RETURN);
    std::filesystem::remove(autostart);
    user.waitForEndOf(screens::ALERT_BUTTON);
}

void Gallery::openMenu()
{
    if (!user.sees(screens::CONTENT)) {
        reopenContent();
    }
    user.activate(screens::OPTIONS);
    user.goTo(screens::LOCK_OTHERS);
    camera->takePopover("menu");
}

void Gallery::showHelp()
{
    user.goTo(screens::HELP_AND_SUPPORT);
    user.press(desktop::KEY_RETURN);
    user.waitForFocusOn(screens::HELP_PAGE);
    camera->takeWindow("help", screens::HELP);
    user.press(desktop::KEY_ESCAPE);
    user.waitForEndOf(person::window(screens::HELP));
}

void Gallery::lock()
{
    const desktop::ChildProcess mousepad = session.desk.start({"mousepad"});
    const Rectangle screen = session.desk.server().screens().front();
    Rectangle edge = screen;
    edge.height = EDGE;
    user.waitUntil("the lock is up", [&] {
        return capture(session.desk.connection(), edge).isAllOf(desktop::LOCK_COLOUR);
    });
    camera->take("lock", screen);
    user.press(desktop::KEY_CAPS_LOCK);
    session.enter("open sesame");
    camera->take("lock-wrong-password", screen);
    user.press(desktop::KEY_CAPS_LOCK);
}

void Gallery::clickTitleOf(const std::string& window)
{
    Rectangle place = camera->placeOfWindow(window).value();
    place.height = static_cast<std::uint16_t>(TITLE_HEIGHT * look.scale);
    user.clickAt(place);
}

} // namespace screenshots
