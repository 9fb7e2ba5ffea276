// An item that is on the bus, registered with the watcher. It has a connection of its own, with
// whose end everybody drops it. Main thread.
#pragma once

#include "linux/dbus/SessionBus.h"
#include "linux/statusbar/StatusArea.h"
#include "linux/statusnotifier/ItemObject.h"
#include "linux/statusnotifier/MenuObject.h"

#include <QDBusPendingCall>

#include <functional>
#include <string>

namespace statusnotifier {

class PublishedItem final : public statusbar::Showing
{
public:
    PublishedItem(const std::string& busAddress, statusbar::ItemSource& item);

    /// The watcher, or the bus, did not take the item: nobody shows it. Must not end this at once.
    std::function<void(const std::string& reason)> onRefused;

    void redraw() override;
    void menuChanged() override;

    /// Hosts do not tell.
    std::optional<platform::Rect> frame() const override { return std::nullopt; }

private:
    void publish(QDBusConnection& connection);
    void claim(const QDBusConnection& connection, const QString& name);
    void registerWithWatcher(const QDBusConnection& connection, const QString& name);
    void followAnswer(const QDBusPendingCall& call);

    ItemObject object;
    MenuObject menu;
    dbus::SessionBus bus; // last: its end takes both objects away
};

} // namespace statusnotifier
