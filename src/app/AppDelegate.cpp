#include "app/AppDelegate.h"

#include "platform/Fatal.h"
#include "platform/Platform.h"
#include "platform/ProcessInfo.h"

#include <algorithm>
#include <utility>

namespace app {

bool isSilentStart(const std::vector<std::string>& arguments)
{
    return std::any_of(arguments.begin(), arguments.end(), [](const std::string& argument) {
        return argument.starts_with("-psn_");
    });
}

AppDelegate::AppDelegate(InterfaceHubFactory makeHub, CentralServiceFactory makeCentralService)
    : makeHub(std::move(makeHub)),
      makeCentralService(std::move(makeCentralService))
{
}

void AppDelegate::applicationDidFinishLaunching()
{
    presetersMainHub = makeHub();
    if (presetersMainHub == nullptr) {
        platform::fatal("there is no interface hub");
    }
    presetersMainHub->present();
    applicationsLockerCentralService = makeCentralService();
    if (applicationsLockerCentralService == nullptr) {
        platform::fatal("there is no central locking service");
    }
    applicationsLockerCentralService->start();
    if (!isSilentStart(platform::current().processInfo.arguments())) {
        presetersMainHub->showPopover();
    }
}

TerminateReply AppDelegate::applicationShouldTerminate() const
{
    return TerminateReply::Cancel;
}

bool AppDelegate::applicationShouldTerminateAfterLastWindowClosed() const
{
    return false;
}

} // namespace app
