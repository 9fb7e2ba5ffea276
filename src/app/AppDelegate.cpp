#include "app/AppDelegate.h"

#include "platform/Fatal.h"
#include "platform/Platform.h"
#include "platform/ProcessInfo.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace app {

namespace {

bool startedSilently()
{
    const std::vector<std::string> arguments = platform::current().processInfo.arguments();
    return std::any_of(arguments.begin(), arguments.end(), [](const std::string& argument) {
        return argument.starts_with("-psn_");
    });
}

} // namespace

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
    if (!startedSilently()) {
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
