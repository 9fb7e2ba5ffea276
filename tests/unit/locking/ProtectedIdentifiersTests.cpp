#include "fakes/FakePlatform.h"
#include "fakes/Secrets.h"
#include "locking/ProtectedIdentifiers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::UnorderedElementsAre;

class ProtectedIdentifiers : public testing::Test
{
protected:
    fakes::FakePlatform platform;
    storage::ConfigurationAndPreferencesService settings;
};

} // namespace

TEST_F(ProtectedIdentifiers, AreUnknownWithoutAPassword)
{
    fakes::storeSecret(platform, "Applications", "org.a;");

    EXPECT_EQ(locking::protectedIdentifiers(settings), std::nullopt);
}

TEST_F(ProtectedIdentifiers, AreTheChosenOnesInstalledOrNot)
{
    fakes::storeSecret(platform, "Password", "secret");
    fakes::storeSecret(platform, "Applications", "org.a;org.b;");
    settings.setLockAdministrativeApplications(false);

    EXPECT_THAT(*locking::protectedIdentifiers(settings), UnorderedElementsAre("org.a", "org.b"));
}

TEST_F(ProtectedIdentifiers, HoldTheAdministrativeOnesWhereThoseAreProtected)
{
    fakes::storeSecret(platform, "Password", "secret");
    settings.setLockAdministrativeApplications(true);

    EXPECT_THAT(
        *locking::protectedIdentifiers(settings),
        UnorderedElementsAre(
            "com.apple.Terminal", "com.apple.keychainaccess", "com.apple.ActivityMonitor"
        )
    );
}
