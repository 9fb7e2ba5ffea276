#include "linux/statusnotifier/StatusNotifierArea.h"

#include "linux/statusnotifier/PublishedItem.h"

#include <utility>

namespace statusnotifier {

StatusNotifierArea::StatusNotifierArea(std::string busAddress)
    : busAddress(std::move(busAddress)),
      watch(this->busAddress)
{
    watch.onChanged = [this] {
        if (const auto changed = onPresenceChanged) {
            changed();
        }
    };
}

std::unique_ptr<statusbar::Showing> StatusNotifierArea::show(statusbar::ItemSource& item)
{
    return std::make_unique<PublishedItem>(busAddress, item);
}

} // namespace statusnotifier
