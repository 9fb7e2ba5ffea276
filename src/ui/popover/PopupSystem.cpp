#include "ui/popover/PopupSystem.h"

#include "app/BackgroundRunner.h"
#include "app/Constants.h"
#include "platform/Call.h"
#include "platform/EventMonitors.h"
#include "platform/Log.h"
#include "platform/Platform.h"

#include <utility>

namespace ui {

namespace {

constexpr auto TITLE = "Tarvel";
constexpr auto OPEN_TITLE = "Open Tarvel";
constexpr auto NO_STATUS_AREA = "this desktop shows no status area: Tarvel opens as a window, and "
                                "each further start of it opens that window again";

} // namespace

PopupSystem::PopupSystem(ViewController& viewController, std::string image, std::string imageWhite)
    : viewController(viewController),
      image(std::move(image)),
      imageWhite(std::move(imageWhite)),
      statusBar(platform::current().statusBar.statusItem(platform::STATUS_ITEM_VARIABLE_LENGTH)),
      popover(viewController)
{
    statusBar->onDraw = [this] { return drawRect(); };
    statusBar->onMouseDown = [this] { mouseDown(); };
    statusBar->setMenu({{OPEN_TITLE, [this] { showPopover(); }}});
    statusBar->setNeedsDisplay();
    popover.onCloseRequest = [this] { hidePopover(); };
    platform::current().eventMonitors.addGlobalMonitor(
        platform::EVENT_MASK_LEFT_MOUSE_DOWN | platform::EVENT_MASK_RIGHT_MOUSE_DOWN,
        lifetime.guard([this](const platform::Event& /*event*/) { hidePopover(); })
    );
}

void PopupSystem::showPopover()
{
    platform::call(onWillShowPopover);
    if (!active) {
        later(&PopupSystem::present);
    }
    platform::current().log.line("Focus");
    systemApplicationsService.focusOnApplication(app::Constants::BUNDLE_ID());
    if (active) {
        popover.comeForward(); // another window of the program may lie over it
    }
}

void PopupSystem::later(void (PopupSystem::*step)())
{
    app::BackgroundRunner::runOnMainThread(lifetime.guard([this, step] { (this->*step)(); }));
}

void PopupSystem::follow()
{
    if (const std::optional<platform::Rect> frame = statusBar->frame()) {
        popover.follow(*frame);
    }
}

void PopupSystem::present()
{
    active = true;
    statusBar->setNeedsDisplay();
    if (statusBar->isShown()) {
        popover.showAtItem(statusBar->frame());
        return;
    }
    if (!absenceSaid) {
        absenceSaid = true;
        platform::current().log.diagnostic(NO_STATUS_AREA);
    }
    popover.showAsWindow();
}

void PopupSystem::hidePopover()
{
    if (!active) {
        return;
    }
    active = false;
    statusBar->setNeedsDisplay();
    popover.closePopover();
}

void PopupSystem::mouseDown()
{
    if (active) {
        hidePopover();
    } else {
        showPopover();
    }
}

platform::StatusItemLook PopupSystem::drawRect()
{
    if (active) {
        later(&PopupSystem::follow); // an item is drawn when it gets its place, or another one
    }
    const bool white = active || systemConfigurationService.darkModeOn();
    return {.image = white ? imageWhite : image, .highlighted = active, .title = TITLE};
}

} // namespace ui
