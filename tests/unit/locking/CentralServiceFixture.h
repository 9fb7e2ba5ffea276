// The central service on a fake desktop with two installed applications, Alpha and Beta, of which
// Alpha is protected, and with the password "secret".
#pragma once

#include "fakes/Applications.h"
#include "fakes/FakeLockWindows.h"
#include "fakes/FakePlatform.h"
#include "fakes/Secrets.h"
#include "locking/ApplicationsLockerCentralService.h"

#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

class CentralService : public testing::Test
{
protected:
    void SetUp() override
    {
        fakes::installApplication(platform, "org.a", "Alpha");
        fakes::installApplication(platform, "org.b", "Beta");
        fakes::storeSecret(platform, "Password", "secret");
        fakes::storeSecret(platform, "Applications", "org.a;");
    }

    void begin()
    {
        service.emplace(lockWindows.factory(), settings);
        service->start();
        forgetWhatHappened();
    }

    void forgetWhatHappened()
    {
        platform.calls.clear();
        platform.log.lines.clear();
    }

    void lockAlpha()
    {
        platform.workspace.startLaunching(alpha);
        ASSERT_TRUE(lockWindows.isLocked());
        forgetWhatHappened();
    }

    void connectScreens(int count)
    {
        platform.screens.list.emplace();
        for (int index = 0; index < count; ++index) {
            platform.screens.list->push_back(fakes::FakeScreens::screen(index));
        }
    }

    /// The settings change without a change that matters.
    void touchSettings() { settings.setStartAtLogin(false); }

    static std::unique_ptr<locking::LockWindow> noLockWindow() { return nullptr; }

    /// What happens when the text is typed into the lock.
    fakes::Calls callsOfTyping(const std::string& text)
    {
        platform.calls.clear();
        lockWindows.type(text);
        return platform.calls;
    }

    [[nodiscard]] std::optional<std::string> mark() const
    {
        const auto found = platform.userDefaults.values.find("cbaal");
        return found == platform.userDefaults.values.end()
                   ? std::nullopt
                   : std::optional(std::get<std::string>(found->second));
    }

    [[nodiscard]] std::vector<std::string> monitored() const
    {
        std::vector<std::string> identifiers;
        for (const auto& application : service->MONITORED_APPS.value()) {
            identifiers.push_back(application->bundleIdentifier);
        }
        return identifiers;
    }

    static constexpr auto HELPER_LAUNCH =
        "workspace launch /opt/Tarvel.app/Contents/Library/LoginItems/OlvoHelper.app 65536 "
        "StartFromMaster=1";

    fakes::FakePlatform platform;
    fakes::FakeLockWindows lockWindows{platform.calls};
    storage::ConfigurationAndPreferencesService settings;
    std::optional<locking::ApplicationsLockerCentralService> service;
    platform::RunningApplication alpha = fakes::runningApplication(100, "org.a", "Alpha");
    platform::RunningApplication beta = fakes::runningApplication(200, "org.b", "Beta");
};
