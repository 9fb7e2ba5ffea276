#include "linux/statusnotifier/StatusNotifierArea.h"

#include "linux/statusnotifier/PublishedItem.h"
#include "platform/Call.h"

#include <utility>

namespace statusnotifier {

StatusNotifierArea::StatusNotifierArea(std::string busAddress, Report report)
    : busAddress(std::move(busAddress)),
      report(std::move(report)),
      watch(this->busAddress)
{
    watch.onChanged = [this] { hostChanged(); };
}

void StatusNotifierArea::hostChanged()
{
    ++showings; // what the one before has still to say counts no more
    refused = false;
    platform::call(onPresenceChanged);
}

std::unique_ptr<statusbar::Showing> StatusNotifierArea::show(statusbar::ItemSource& item)
{
    auto published = std::make_unique<PublishedItem>(busAddress, item);
    published->onRefused = [this, showing = ++showings](const std::string& reason) {
        const auto refuseIt = [this, showing, reason] {
            if (showing == showings) {
                refuse(reason);
            }
        };
        QMetaObject::invokeMethod(&watch, refuseIt, Qt::QueuedConnection); // it ends the item
    };
    return published;
}

void StatusNotifierArea::refuse(const std::string& reason)
{
    if (std::exchange(refused, true)) {
        return;
    }
    platform::call(report, "the desktop's status area does not take Tarvel's item: " + reason);
    platform::call(onPresenceChanged);
}

} // namespace statusnotifier
