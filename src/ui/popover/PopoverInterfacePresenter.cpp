#include "ui/popover/PopoverInterfacePresenter.h"

#include "app/SafeQuitService.h"
#include "applications/SystemConfigurationService.h"
#include "platform/Log.h"
#include "platform/Platform.h"
#include "platform/Text.h"
#include "ui/alerts/AlertMessagesService.h"
#include "ui/views/Images.h"

namespace ui {

using State = PopoverViewController::State;

namespace {

std::string picture(const QString& name)
{
    static_cast<void>(requiredImage(name));
    return imagePath(name).toStdString();
}

} // namespace

PopoverInterfacePresenter::PopoverInterfacePresenter()
    : popoverViewController(std::make_unique<PopoverViewController>()),
      configurationAndPreferencesService(
          storage::ConfigurationAndPreferencesService::sharedInstance()
      )
{
}

void PopoverInterfacePresenter::startService()
{
    popupSystem = std::make_unique<PopupSystem>(
        *popoverViewController,
        picture(QStringLiteral("AppMenuBarIconBlack")),
        picture(QStringLiteral("AppMenuBarIconWhite"))
    );
    wire();
    const bool isActive = configurationAndPreferencesService.getApplicationIsActive();
    const bool startsAtLogin = configurationAndPreferencesService.getStartAtLogin();
    popoverViewController->initiateData(
        isActive, startsAtLogin, configurationAndPreferencesService.getLockedApplications()
    );
}

void PopoverInterfacePresenter::wire()
{
    configurationAndPreferencesService.addOnConfigurationChangeEvent(lifetime.guard([this] {
        popoverViewController->refreshLockedApplicationsAndInterface(
            configurationAndPreferencesService.getLockedApplications()
        );
        askForNewPassword();
    }));
    popupSystem->onWillShowPopover = [this] {
        popoverViewController->state = configurationAndPreferencesService.hasPassword()
                                           ? State::PasswordRequired
                                           : State::NoPassword;
    };
    PopoverViewController& controller = *popoverViewController;
    controller.onPasswordEntered = [this](const std::string& typed) { checkPassword(typed); };
    controller.onAddApplicationsRequest = onAddApplicationsRequest;
    controller.onRemoveApplicationRequest =
        [this](const applications::ApplicationEntityPtr& application) {
            removeApplication(*application);
        };
    controller.onIsActiveConfigurationChanged = [this](bool active) { switchActive(active); };
    controller.onStartAtLoginConfigurationChanged = [this](bool on) { switchLoginItem(on); };
    controller.onQuitRequest = [] { app::SafeQuitService::quitApplication(); };
    controller.onChangePreferencesRequest = onChangePreferencesRequest;
    controller.onHelpRequest = onHelpRequest;
}

void PopoverInterfacePresenter::showService()
{
    popupSystem->showPopover();
}

void PopoverInterfacePresenter::hideService()
{
    popupSystem->hidePopover();
}

void PopoverInterfacePresenter::stopService() {}

/// Who has just set the first password is asked for it as at any other opening: the page would
/// offer everybody to set another one.
void PopoverInterfacePresenter::askForNewPassword()
{
    if (popoverViewController->showsNoPasswordPage() &&
        configurationAndPreferencesService.hasPassword()) {
        popoverViewController->state = State::PasswordRequired;
        popoverViewController->viewWillAppear();
    }
}

void PopoverInterfacePresenter::checkPassword(const std::string& typed)
{
    const std::string stored = configurationAndPreferencesService.getApplicationPassword();
    // Nothing stored is no password, and no password opens nothing.
    if (!stored.empty() && platform::text::canonicallyEqual(typed, stored)) {
        popoverViewController->state = State::Unlocked;
        popoverViewController->showContent();
    } else {
        popoverViewController->wrongPassword();
    }
}

void PopoverInterfacePresenter::removeApplication(const applications::ApplicationEntity& application
)
{
    platform::current().log.line("removeApplicationRequest: " + application.name);
    configurationAndPreferencesService.removeLockedApplicationBundleId(application.bundleIdentifier
    );
}

void PopoverInterfacePresenter::switchActive(bool active)
{
    platform::current().log.line("isActiveConfigurationChanged");
    configurationAndPreferencesService.setApplicationIsActive(active);
}

void PopoverInterfacePresenter::switchLoginItem(bool enabled)
{
    platform::current().log.line("startAtLoginConfigurationChanged");
    if (applications::SystemConfigurationService().startAtLogin(enabled)) {
        configurationAndPreferencesService.setStartAtLogin(enabled);
        return;
    }
    AlertMessagesService().showAlert(
        "There was an error",
        "Tarvel could not be added to the login items. You can check your system's security "
        "settings or you can restart your Mac and retry",
        AlertMessagesService::CRITICAL,
        nullptr
    );
}

} // namespace ui
