#include "linux/statusnotifier/StatusNotifierArea.h"

#include "linux/statusnotifier/PublishedItem.h"
#include "platform/Call.h"

#include <utility>

namespace statusnotifier {

StatusNotifierArea::StatusNotifierArea(std::string busAddress)
    : busAddress(std::move(busAddress)),
      watch(this->busAddress)
{
    watch.onChanged = [this] { platform::call(onPresenceChanged); };
}

std::unique_ptr<statusbar::Showing> StatusNotifierArea::show(statusbar::ItemSource& item)
{
    return std::make_unique<PublishedItem>(busAddress, item);
}

} // namespace statusnotifier
