#include "applications/ConfigurationConstants.h"
#include "fakes/FakePlatform.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using applications::ConfigurationConstants;
using testing::ElementsAre;

TEST(ConfigurationConstants, ThisProgramThenTheHelperAreBanned)
{
    fakes::FakePlatform platform;
    platform.bundles.main.identifier = "com.example.Renamed";

    EXPECT_THAT(
        ConfigurationConstants::BANNED_APPLICATIONS_BUNDLE_IDS(),
        ElementsAre("com.example.Renamed", "com.quorvent.OlvoHelper")
    );
}

TEST(ConfigurationConstants, AMainBundleWithoutAnIdentifierStopsTheProcess)
{
    fakes::FakePlatform platform;
    platform.bundles.main.identifier.reset();

    EXPECT_DEATH(
        ConfigurationConstants::BANNED_APPLICATIONS_BUNDLE_IDS(),
        "the main bundle has no identifier"
    );
}

TEST(ConfigurationConstants, TheOtherListsAreFixed)
{
    EXPECT_THAT(
        ConfigurationConstants::WHITE_LIST_APPLICATIONS_BUNDLE_IDS,
        ElementsAre("com.apple.systempreferences")
    );
    EXPECT_THAT(
        ConfigurationConstants::ADMINISTRATIVE_APPLICATIONS_BUNDLE_IDS,
        ElementsAre("com.apple.Terminal", "com.apple.keychainaccess", "com.apple.ActivityMonitor")
    );
    EXPECT_EQ(ConfigurationConstants::SYSTEM_APPLICATION_PATH_PREFIX, "/System/");
}
