#include "fakes/FakePlatform.h"
#include "locking/CurrentMonitoredApplicationService.h"

#include <variant>

#include <gtest/gtest.h>

namespace {

class CurrentMonitoredApplicationServiceTest : public testing::Test
{
protected:
    fakes::FakePlatform platform;
    locking::CurrentMonitoredApplicationService service;
};

} // namespace

TEST_F(CurrentMonitoredApplicationServiceTest, AFreshInstallationHasNoBlockedApplication)
{
    EXPECT_EQ(service.currentMonitoredApplication(), std::nullopt);
}

TEST_F(CurrentMonitoredApplicationServiceTest, AMarkIsReadBackUnchangedAlsoByANewInstance)
{
    service.markMinitoredApplication(" org.example.Alpha ");

    EXPECT_EQ(service.currentMonitoredApplication(), " org.example.Alpha ");
    locking::CurrentMonitoredApplicationService other;
    EXPECT_EQ(other.currentMonitoredApplication(), " org.example.Alpha ");
}

TEST_F(CurrentMonitoredApplicationServiceTest, TheMarkIsInTheUserDefaultsAndNotInTheKeychain)
{
    service.markMinitoredApplication("org.example.Alpha");

    EXPECT_EQ(std::get<std::string>(platform.userDefaults.values.at("cbaal")), "org.example.Alpha");
    EXPECT_TRUE(platform.keychainItems.items.empty());
}

TEST_F(CurrentMonitoredApplicationServiceTest, UnmarkingLeavesNothing)
{
    service.markMinitoredApplication("org.example.Alpha");

    service.unmarkMinitoredApplication();

    EXPECT_EQ(service.currentMonitoredApplication(), std::nullopt);
    EXPECT_TRUE(platform.userDefaults.values.empty());
}

TEST_F(CurrentMonitoredApplicationServiceTest, MarkingWithTheEmptyStringIsNoMark)
{
    service.markMinitoredApplication("org.example.Alpha");

    service.markMinitoredApplication("");

    EXPECT_EQ(service.currentMonitoredApplication(), std::nullopt);
}

TEST_F(CurrentMonitoredApplicationServiceTest, TheSecondOfTwoMarksCounts)
{
    service.markMinitoredApplication("org.example.Alpha");
    service.markMinitoredApplication("org.example.Beta");

    EXPECT_EQ(service.currentMonitoredApplication(), "org.example.Beta");
}
