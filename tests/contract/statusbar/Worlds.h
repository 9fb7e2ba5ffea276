// Desktops with and without a status area, each with a status bar to be tested.
#pragma once

#include "ItemClient.h"
#include "desktop/Desktop.h"
#include "desktop/FakeStatusNotifierWatcher.h"
#include "desktop/FakeTray.h"
#include "fakes/FakeStatusBar.h"
#include "linux/qt/QtDispatchQueues.h"
#include "linux/statusbar/DesktopStatusBar.h"
#include "linux/statusnotifier/StatusNotifierArea.h"
#include "linux/tray/TrayArea.h"
#include "qt/WaitFor.h"

#include <QApplication>
#include <QMenu>

#include <memory>
#include <optional>
#include <string_view>
#include <utility>

/// In memory.
class FakeWorld
{
public:
    FakeWorld() { fake.shown = false; }

    platform::StatusBar& bar() { return fake; }

    void areaComes() { setShown(true); }

    void areaGoes() { setShown(false); }

    void click() const
    {
        const auto handler = fake.item->onMouseDown;
        if (handler) {
            handler();
        }
    }

    void choose(std::size_t entry) const { fake.item->menu[entry].action(); }

    template <typename Condition> bool soon(Condition&& condition)
    {
        if (fake.item != nullptr && fake.shown && fake.item->needsDisplay) {
            fake.item->draw();
        }
        return condition();
    }

    bool isTakenAway() const { return fake.item == nullptr; }

private:
    void setShown(bool shown)
    {
        fake.shown = shown;
        if (fake.item != nullptr) {
            fake.item->needsDisplay = true;
        }
    }

    fakes::Calls calls;
    fakes::FakeStatusBar fake{calls};
};

template <typename Area, typename... Arguments>
statusbar::DesktopStatusBar::Areas only(Arguments&&... arguments)
{
    statusbar::DesktopStatusBar::Areas areas;
    areas.push_back(std::make_unique<Area>(std::forward<Arguments>(arguments)...));
    return areas;
}

/// A bus of the test's own, with a watcher on it or not.
class NotifierWorld
{
public:
    platform::StatusBar& bar() { return statusBar; }

    void areaComes() { watcher.emplace(bus.address()); }

    void areaGoes() { watcher.reset(); }

    void click() { client().call(ItemClient::ITEM, "Activate", {10, 20}); }

    void choose(std::size_t entry)
    {
        const auto none = QVariant::fromValue(QDBusVariant(QString()));
        const int id = static_cast<int>(entry) + 1;
        client().call(ItemClient::MENU, "Event", {id, QStringLiteral("clicked"), none, 0U});
    }

    template <typename Condition> bool soon(Condition&& condition)
    {
        return support::waitFor(condition);
    }

    bool isTakenAway() const { return !bus.hasOwner(watcher->registered().back()); }

    /// Of the item that registered last.
    ItemClient& client()
    {
        support::waitFor([&] { return !watcher->registered().empty(); });
        asking.emplace(bus.address(), watcher->registered().back());
        return *asking;
    }

    desktop::TemporaryFolder folder;
    desktop::PrivateBus bus{folder.path(), desktop::privateEnvironment(folder)};
    std::optional<desktop::FakeStatusNotifierWatcher> watcher;
    qt::QtDispatchQueues queues;
    statusbar::DesktopStatusBar statusBar{
        only<statusnotifier::StatusNotifierArea>(bus.address()), queues};

private:
    std::optional<ItemClient> asking;
};

/// A display of the test's own, with a tray on it or not.
class TrayWorld
{
public:
    platform::StatusBar& bar() { return statusBar; }

    void areaComes() { areaComes({}); }

    void areaComes(const desktop::FakeTray::Options& options)
    {
        tray.emplace(desk.server().displayName(), options);
    }

    void areaGoes() { tray.reset(); }

    void click() { press(LEFT); }

    void choose(std::size_t entry)
    {
        press(RIGHT);
        support::waitFor([] { return QApplication::activePopupWidget() != nullptr; });
        QWidget* menu = QApplication::activePopupWidget();
        if (menu != nullptr) {
            menu->actions()[static_cast<qsizetype>(entry)]->trigger();
            menu->close();
        }
    }

    template <typename Condition> bool soon(Condition&& condition)
    {
        return support::waitFor([&] {
            if (tray.has_value()) {
                tray->icon(); // works while it is asked
            }
            return condition();
        });
    }

    bool isTakenAway() { return tray->icon() == XCB_NONE; }

    /// A press and a release of a button there, once it is there.
    void press(std::uint8_t button)
    {
        soon([&] { return isViewable(); });
        const desktop::Rectangle place = desk.windows().placeOf(tray->icon());
        desk.input().click(
            static_cast<std::int16_t>(place.x + place.width / 2),
            static_cast<std::int16_t>(place.y + place.height / 2),
            button
        );
    }

    bool isViewable()
    {
        const xcb_window_t icon = tray->icon();
        return icon != XCB_NONE && desk.windows().isViewable(icon);
    }

    static constexpr std::uint8_t LEFT = 1;
    static constexpr std::uint8_t RIGHT = 3;

    desktop::Desktop desk{
        desktop::Desktop::Parts{.windowManager = false, .bus = false, .keyring = false}};
    std::optional<desktop::FakeTray> tray;
    qt::QtDispatchQueues queues;
    x11::X11Desktop display{
        x11::Connection::open(desk.server().displayName()), queues, [](std::string_view) {}};
    statusbar::DesktopStatusBar statusBar{only<::tray::TrayArea>(display), queues};
};
