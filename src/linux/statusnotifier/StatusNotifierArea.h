// The status area that is spoken to over the bus, as most panels of today offer it. Main thread.
#pragma once

#include "linux/statusbar/StatusArea.h"
#include "linux/statusnotifier/StatusNotifierWatch.h"
#include "platform/Report.h"

#include <QTimer>

#include <string>

namespace statusnotifier {

class StatusNotifierArea final : public statusbar::StatusArea
{
public:
    /// `report` is told when a watcher does not take the item in; the area then counts as absent
    /// until a watcher or a host comes.
    explicit StatusNotifierArea(std::string busAddress, platform::Report report = nullptr);

    bool isPresent() override { return watch.hasHost() && !refused; }

    std::unique_ptr<statusbar::Showing> show(statusbar::ItemSource& item) override;

private:
    void hostChanged();
    void refuse();

    std::string busAddress;
    platform::Report report;
    StatusNotifierWatch watch;
    QTimer refusal; // one turn later: it ends the item that was refused
    std::string reason;
    bool refused = false;
};

} // namespace statusnotifier
