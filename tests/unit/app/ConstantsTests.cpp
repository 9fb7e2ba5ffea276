#include "app/Constants.h"
#include "fakes/FakePlatform.h"

#include <gtest/gtest.h>

TEST(Constants, TheIdentifierIsReadAtEachCall)
{
    fakes::FakePlatform platform;
    EXPECT_EQ(app::Constants::BUNDLE_ID(), "com.quorvent.Tarvel");

    platform.bundles.main.identifier = "com.example.Other";

    EXPECT_EQ(app::Constants::BUNDLE_ID(), "com.example.Other");
}

TEST(Constants, NameTheHelper)
{
    EXPECT_STREQ(app::Constants::HELPER_BUNDLE_ID, "com.quorvent.OlvoHelper");
    EXPECT_STREQ(app::Constants::HELPER_APP_NAME, "OlvoHelper.app");
}

TEST(Constants, AMainBundleWithoutAnIdentifierStopsTheProcess)
{
    fakes::FakePlatform platform;

    platform.bundles.main.identifier.reset();
    EXPECT_DEATH(app::Constants::BUNDLE_ID(), "the main bundle has no identifier");

    platform.bundles.main.identifier = "";
    EXPECT_DEATH(app::Constants::BUNDLE_ID(), "the main bundle has no identifier");
}
