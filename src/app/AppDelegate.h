// The root of the running program. At start it makes the interface and the locking service, and
// keeps both for the life of the process; afterwards it refuses every ordinary request to quit.
// Main thread only. A factory that gives nothing stops the process.
#pragma once

#include "app/InterfaceHub.h"
#include "locking/ApplicationsLockerCentralService.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace ui {
class GreetingsWindowPresenter;
}

namespace app {

/// Answers to a request to quit.
enum class TerminateReply
{
    Cancel = 0,
    Now = 1,
};

/// Whether nobody is meant to notice the start: an argument begins with "-psn_".
[[nodiscard]] bool isSilentStart(const std::vector<std::string>& arguments);

class AppDelegate
{
public:
    using InterfaceHubFactory = std::function<std::unique_ptr<InterfaceHub>()>;
    using CentralServiceFactory =
        std::function<std::unique_ptr<locking::ApplicationsLockerCentralService>()>;

    /// Makes nothing yet.
    AppDelegate(InterfaceHubFactory makeHub, CentralServiceFactory makeCentralService);

    /// Interface first, then the locking service. A silent start opens nothing, any other the
    /// popover.
    void applicationDidFinishLaunching();

    /// Always `Cancel`: what ends the process does so itself, past the toolkit's requests to quit.
    [[nodiscard]] TerminateReply applicationShouldTerminate() const;

    /// Always false.
    [[nodiscard]] bool applicationShouldTerminateAfterLastWindowClosed() const;

    std::unique_ptr<locking::ApplicationsLockerCentralService> applicationsLockerCentralService;
    /// Part of the interface, and empty: the greeting is the hub's.
    ui::GreetingsWindowPresenter* greetingsWindowPresenter = nullptr;
    std::unique_ptr<InterfaceHub> presetersMainHub;

private:
    InterfaceHubFactory makeHub;
    CentralServiceFactory makeCentralService;
};

} // namespace app
