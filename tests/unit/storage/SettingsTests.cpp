// The defaults, the switches, and what all settings share.
#include "SettingsTest.h"

using storage::ConfigurationAndPreferencesService;
using testing::IsEmpty;

TEST_F(SettingsTest, AFreshInstallationHasTheDefaults)
{
    EXPECT_FALSE(settings.hasPassword());
    EXPECT_EQ(settings.getApplicationPassword(), "");
    EXPECT_TRUE(settings.getApplicationIsActive());
    EXPECT_TRUE(settings.getLockAdministrativeApplications());
    EXPECT_FALSE(settings.getStartAtLogin());
    EXPECT_THAT(settings.getLockedApplicationsBundleIds(), IsEmpty());
    EXPECT_THAT(settings.getLockedApplications(), IsEmpty());
}

TEST_F(SettingsTest, AFailingStorageReadsAsTheDefaults)
{
    settings.setApplicationIsActive(false);
    settings.setStartAtLogin(true);
    settings.setApplicationPassword("secret");
    platform.keychainItems.failing = true;

    EXPECT_FALSE(settings.hasPassword());
    EXPECT_TRUE(settings.getApplicationIsActive());
    EXPECT_TRUE(settings.getLockAdministrativeApplications());
    EXPECT_FALSE(settings.getStartAtLogin());
    EXPECT_THAT(settings.getLockedApplicationsBundleIds(), IsEmpty());
}

TEST_F(SettingsTest, SwitchesAreWrittenAsDigits)
{
    settings.setApplicationIsActive(true);
    settings.setStartAtLogin(true);
    settings.setLockAdministrativeApplications(true);
    EXPECT_EQ(fakes::secret(platform, "Active"), "1");
    EXPECT_EQ(fakes::secret(platform, "LoginStart"), "1");
    EXPECT_EQ(fakes::secret(platform, "Administrative"), "1");
    EXPECT_TRUE(settings.getStartAtLogin());

    settings.setApplicationIsActive(false);
    settings.setStartAtLogin(false);
    settings.setLockAdministrativeApplications(false);
    EXPECT_EQ(fakes::secret(platform, "Active"), "0");
    EXPECT_EQ(fakes::secret(platform, "LoginStart"), "0");
    EXPECT_EQ(fakes::secret(platform, "Administrative"), "0");
    EXPECT_FALSE(settings.getApplicationIsActive());
    EXPECT_FALSE(settings.getStartAtLogin());
    EXPECT_FALSE(settings.getLockAdministrativeApplications());
}

TEST_F(SettingsTest, AnyOtherTextOfASwitchReadsAsOff)
{
    for (const char* key : {"Active", "Administrative", "LoginStart"}) {
        fakes::storeSecret(platform, key, "true");
    }

    EXPECT_FALSE(settings.getApplicationIsActive());
    EXPECT_FALSE(settings.getLockAdministrativeApplications());
    EXPECT_FALSE(settings.getStartAtLogin());
}

TEST_F(SettingsTest, NothingIsCached)
{
    ConfigurationAndPreferencesService other;

    other.setApplicationPassword("secret");
    other.setApplicationIsActive(false);

    EXPECT_EQ(settings.getApplicationPassword(), "secret");
    EXPECT_FALSE(settings.getApplicationIsActive());
}

TEST_F(SettingsTest, TheSharedInstanceIsOneAndTheSame)
{
    ConfigurationAndPreferencesService& shared =
        ConfigurationAndPreferencesService::sharedInstance();

    EXPECT_EQ(&shared, &ConfigurationAndPreferencesService::sharedInstance());
    EXPECT_NE(&shared, &settings);
    settings.setApplicationPassword("secret");
    EXPECT_EQ(shared.getApplicationPassword(), "secret");
}
