#include "fakes/FakePlatform.h"
#include "fakes/Secrets.h"
#include "locking/InstalledProtection.h"

#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using Identifiers = std::set<std::string>;

class InstalledProtection : public testing::Test
{
protected:
    InstalledProtection()
    {
        fakes::storeSecret(platform, "Password", "secret");
        fakes::storeSecret(platform, "Applications", "org.a;org.b;");
        settings.setLockAdministrativeApplications(false);
        protection.onProtectedChanged = [this](const Identifiers& identifiers) {
            told.push_back(identifiers);
        };
    }

    void follow()
    {
        protection.follow(settings);
        settings.addOnConfigurationChangeEvent([this] { ++changes; });
    }

    fakes::FakePlatform platform;
    storage::ConfigurationAndPreferencesService settings;
    Identifiers installed = {"org.a", "org.c"};
    std::vector<Identifiers> told;
    int changes = 0;
    locking::InstalledProtection protection{
        [this](const std::string& identifier) { return installed.contains(identifier); }};
};

} // namespace

TEST_F(InstalledProtection, TellsWhomTheSettingsProtectInstalledOrNot)
{
    follow();

    EXPECT_THAT(told, ElementsAre(Identifiers{"org.a", "org.b"}));
}

TEST_F(InstalledProtection, TellsAgainWhenAnotherApplicationIsChosen)
{
    follow();

    settings.addLockedApplicationBundleId("org.c");

    EXPECT_EQ(told.back(), (Identifiers{"org.a", "org.b", "org.c"}));
}

TEST_F(InstalledProtection, TellsNothingWhileTheSettingsDoNotAnswer)
{
    follow();
    told.clear();

    fakes::storeSecret(platform, "Password", "");
    settings.applicationsChanged();

    EXPECT_TRUE(told.empty());
}

TEST_F(InstalledProtection, CallsItAChangeOfTheSettingsWhenAProtectedApplicationIsInstalled)
{
    follow();

    installed.insert("org.b");
    protection.applicationsChanged();

    EXPECT_EQ(changes, 1);
}

TEST_F(InstalledProtection, CallsItAChangeOfTheSettingsWhenAProtectedApplicationIsRemoved)
{
    follow();

    installed.erase("org.a");
    protection.applicationsChanged();

    EXPECT_EQ(changes, 1);
}

TEST_F(InstalledProtection, IsQuietAboutApplicationsThatNobodyProtects)
{
    follow();

    installed.insert("org.d");
    protection.applicationsChanged();

    EXPECT_EQ(changes, 0);
}

TEST_F(InstalledProtection, IsQuietBeforeItFollowsAnySettings)
{
    installed.insert("org.b");
    protection.applicationsChanged();

    EXPECT_EQ(changes, 0);
    EXPECT_TRUE(told.empty());
}
