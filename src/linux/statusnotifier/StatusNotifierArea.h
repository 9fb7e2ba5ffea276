// The status area that is spoken to over the bus, as most panels of today offer it. Main thread.
#pragma once

#include "linux/statusbar/StatusArea.h"
#include "linux/statusnotifier/StatusNotifierWatch.h"

#include <string>

namespace statusnotifier {

class StatusNotifierArea final : public statusbar::StatusArea
{
public:
    explicit StatusNotifierArea(std::string busAddress);

    bool isPresent() override { return watch.hasHost(); }

    std::unique_ptr<statusbar::Showing> show(statusbar::ItemSource& item) override;

private:
    std::string busAddress;
    StatusNotifierWatch watch;
};

} // namespace statusnotifier
