#include "app/SafeQuitService.h"
#include "fakes/FakePlatform.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

TEST(SafeQuitService, TellsTheHelperToEndThenEndsWithStatusZero)
{
    fakes::FakePlatform platform;

    EXPECT_THROW(app::SafeQuitService::quitApplication(), fakes::ProcessEnded);

    EXPECT_THAT(
        platform.calls,
        ElementsAre(
            "distributedNotifications post TERMINATE_HELPER_TARVEL com.quorvent.Tarvel",
            "processInfo exit 0"
        )
    );
}

TEST(SafeQuitService, AMainBundleWithoutAnIdentifierStopsTheProcess)
{
    fakes::FakePlatform platform;
    platform.bundles.main.identifier.reset();

    EXPECT_DEATH(app::SafeQuitService::quitApplication(), "the main bundle has no identifier");
}
