#include "linux/statusnotifier/StatusNotifierArea.h"

#include "linux/statusnotifier/PublishedItem.h"
#include "platform/Call.h"

#include <utility>

namespace statusnotifier {

StatusNotifierArea::StatusNotifierArea(std::string busAddress, platform::Report report)
    : busAddress(std::move(busAddress)),
      report(std::move(report)),
      watch(this->busAddress)
{
    watch.onChanged = [this] { hostChanged(); };
    refusal.setSingleShot(true);
    QObject::connect(&refusal, &QTimer::timeout, &refusal, [this] { refuse(); });
}

void StatusNotifierArea::hostChanged()
{
    refusal.stop(); // it was about what is no more
    refused = false;
    platform::call(onPresenceChanged);
}

std::unique_ptr<statusbar::Showing> StatusNotifierArea::show(statusbar::ItemSource& item)
{
    refusal.stop();
    auto published = std::make_unique<PublishedItem>(busAddress, item);
    published->onRefused = [this](const std::string& given) {
        reason = given;
        refusal.start(0);
    };
    return published;
}

void StatusNotifierArea::refuse()
{
    if (std::exchange(refused, true)) {
        return;
    }
    platform::call(report, "the desktop's status area does not take Tarvel's item: " + reason);
    platform::call(onPresenceChanged);
}

} // namespace statusnotifier
