#include "fakes/FakePlatform.h"
#include "platform/Platform.h"

#include <gtest/gtest.h>

TEST(Platform, CurrentWithoutAnInstalledPlatformStopsTheProcess)
{
    EXPECT_DEATH(platform::current(), "no platform is installed");
}

TEST(Platform, CurrentGivesTheInstalledPlatform)
{
    const fakes::FakePlatform fake;

    EXPECT_EQ(&platform::current().workspace, &fake.workspace);
}
