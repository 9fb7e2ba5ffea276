#include "fakes/Applications.h"
#include "fakes/FakePlatform.h"
#include "fakes/Secrets.h"
#include "storage/ConfigurationAndPreferencesService.h"

#include <algorithm>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using storage::ConfigurationAndPreferencesService;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class SettingsTest : public testing::Test
{
protected:
    fakes::FakePlatform platform;
    ConfigurationAndPreferencesService settings;

    std::vector<std::string> namesOfLockedApplications()
    {
        std::vector<std::string> names;
        for (const auto& entity : settings.getLockedApplications()) {
            names.push_back(entity->name);
        }
        return names;
    }

    int countChanges(const std::function<void()>& action)
    {
        auto count = std::make_shared<int>(0);
        settings.addOnConfigurationChangeEvent([count] { ++*count; });
        action();
        return *count;
    }

    static std::string refusalOf(const std::string& password, const std::string& confirmation)
    {
        const storage::PasswordValidation validation =
            ConfigurationAndPreferencesService::validateNewPassword(password, confirmation);
        EXPECT_EQ(validation.accepted, validation.message.empty());
        return validation.message;
    }
};

} // namespace

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

TEST_F(SettingsTest, AListIsSplitAndTrimmedAndItsEmptyPiecesAreDropped)
{
    fakes::storeSecret(platform, "Applications", " a.b ;;\nc.d;");

    EXPECT_THAT(settings.getLockedApplicationsBundleIds(), ElementsAre("a.b", "c.d"));
}

TEST_F(SettingsTest, AListWithoutAClosingSeparatorIsRead)
{
    fakes::storeSecret(platform, "Applications", "a.b;c.d");

    EXPECT_THAT(settings.getLockedApplicationsBundleIds(), ElementsAre("a.b", "c.d"));
}

TEST_F(SettingsTest, EachIdentifierIsStoredWithASeparatorBehindIt)
{
    settings.addLockedApplicationBundleId("a.b");
    EXPECT_EQ(fakes::secret(platform, "Applications"), "a.b;");

    settings.addLockedApplicationBundleId("c.d");
    EXPECT_THAT(settings.getLockedApplicationsBundleIds(), UnorderedElementsAre("a.b", "c.d"));
    EXPECT_EQ(fakes::secret(platform, "Applications")->size(), 8U);

    settings.removeLockedApplicationBundleId("a.b");
    settings.removeLockedApplicationBundleId("c.d");
    EXPECT_EQ(fakes::secret(platform, "Applications"), "");
}

TEST_F(SettingsTest, AddingAnIdentifierThatIsPresentLeavesOneCopy)
{
    fakes::storeSecret(platform, "Applications", "a.b;c.d;c.d;");

    settings.addLockedApplicationBundleId("a.b");

    EXPECT_THAT(settings.getLockedApplicationsBundleIds(), UnorderedElementsAre("a.b", "c.d"));
}

TEST_F(SettingsTest, IdentifiersAreCaseSensitive)
{
    settings.addLockedApplicationBundleId("a.b");
    settings.addLockedApplicationBundleId("A.B");
    settings.removeLockedApplicationBundleId("a.b");

    EXPECT_THAT(settings.getLockedApplicationsBundleIds(), ElementsAre("A.B"));
}

TEST_F(SettingsTest, RemovingTakesEveryOccurrenceAndKeepsTheOrder)
{
    fakes::storeSecret(platform, "Applications", "x;a;y;a;z;");

    settings.removeLockedApplicationBundleId("a");

    EXPECT_EQ(fakes::secret(platform, "Applications"), "x;y;z;");
}

TEST_F(SettingsTest, RemovingAnAbsentIdentifierStillRewritesTheListAndNotifies)
{
    fakes::storeSecret(platform, "Applications", " a.b ;;c.d");

    const int changes = countChanges([this] { settings.removeLockedApplicationBundleId("x.y"); });

    EXPECT_EQ(fakes::secret(platform, "Applications"), "a.b;c.d;");
    EXPECT_EQ(changes, 1);
}

TEST_F(SettingsTest, OnlyInstalledApplicationsAreListedAndTheOthersStayStored)
{
    fakes::installApplication(platform, "org.example.Alpha", "Alpha");
    fakes::storeSecret(platform, "Applications", "org.example.Gone;org.example.Alpha;");

    EXPECT_THAT(namesOfLockedApplications(), ElementsAre("Alpha"));
    EXPECT_THAT(
        settings.getLockedApplicationsBundleIds(),
        ElementsAre("org.example.Gone", "org.example.Alpha")
    );
}

TEST_F(SettingsTest, LockedApplicationsAreSortedByNameWithCase)
{
    fakes::installApplication(platform, "1", "alpha");
    fakes::installApplication(platform, "2", "Zeta");
    fakes::installApplication(platform, "3", "Beta");
    fakes::installApplication(platform, "4", "10 apps");
    fakes::storeSecret(platform, "Applications", "1;2;3;4;");

    EXPECT_THAT(namesOfLockedApplications(), ElementsAre("10 apps", "Beta", "Zeta", "alpha"));
}

TEST_F(SettingsTest, LockedApplicationsAreSortedAlikeInWhateverOrderTheyAreStored)
{
    fakes::installApplication(platform, "1", "Zeta");
    fakes::installApplication(platform, "2", "alpha");
    fakes::installApplication(platform, "3", "\u00E4rger");
    std::vector<std::string> stored{"1;", "2;", "3;"};
    do {
        fakes::storeSecret(platform, "Applications", stored[0] + stored[1] + stored[2]);
        EXPECT_THAT(namesOfLockedApplications(), ElementsAre("Zeta", "alpha", "\u00E4rger"));
    } while (std::next_permutation(stored.begin(), stored.end()));
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

TEST_F(SettingsTest, ThePasswordIsStoredUncheckedAndAsTyped)
{
    settings.setApplicationPassword(" s ");

    EXPECT_EQ(fakes::secret(platform, "Password"), " s ");
    EXPECT_EQ(settings.getApplicationPassword(), " s ");
    EXPECT_TRUE(settings.hasPassword());

    settings.setApplicationPassword("");
    EXPECT_FALSE(settings.hasPassword());
}

TEST_F(SettingsTest, NothingIsCached)
{
    ConfigurationAndPreferencesService other;

    other.setApplicationPassword("secret");
    other.setApplicationIsActive(false);

    EXPECT_EQ(settings.getApplicationPassword(), "secret");
    EXPECT_FALSE(settings.getApplicationIsActive());
}

TEST_F(SettingsTest, HandlersAreCalledInTheOrderRegisteredOnceAChange)
{
    std::vector<int> order;
    for (const int number : {1, 2, 3}) {
        settings.addOnConfigurationChangeEvent([&order, number] { order.push_back(number); });
    }

    settings.setApplicationIsActive(true);
    EXPECT_THAT(order, ElementsAre(1, 2, 3));

    settings.setApplicationPassword("secret");
    EXPECT_THAT(order, ElementsAre(1, 2, 3, 1, 2, 3));
}

TEST_F(SettingsTest, EverySetterNotifiesAlsoWhenNothingChanged)
{
    const int changes = countChanges([this] {
        for (int round = 0; round < 2; ++round) {
            settings.setApplicationPassword("secret");
            settings.setApplicationIsActive(true);
            settings.setStartAtLogin(false);
            settings.setLockAdministrativeApplications(true);
            settings.addLockedApplicationBundleId("a.b");
        }
    });

    EXPECT_EQ(changes, 10);
}

TEST_F(SettingsTest, AHandlerIsCalledAsOftenAsItIsRegistered)
{
    int count = 0;
    const auto handler = [&count] { ++count; };
    settings.addOnConfigurationChangeEvent(handler);
    settings.addOnConfigurationChangeEvent(handler);

    settings.setStartAtLogin(true);

    EXPECT_EQ(count, 2);
}

TEST_F(SettingsTest, HandlersSeeTheNewValue)
{
    bool seen = true;
    settings.addOnConfigurationChangeEvent([&] { seen = settings.getApplicationIsActive(); });

    settings.setApplicationIsActive(false);

    EXPECT_FALSE(seen);
}

TEST_F(SettingsTest, AHandlerThatChangesASettingCausesANestedRound)
{
    std::vector<std::string> order;
    settings.addOnConfigurationChangeEvent([&] {
        order.emplace_back("first");
        if (settings.getApplicationIsActive()) {
            settings.setApplicationIsActive(false);
        }
    });
    settings.addOnConfigurationChangeEvent([&order] { order.emplace_back("second"); });

    settings.setApplicationPassword("secret");

    EXPECT_THAT(order, ElementsAre("first", "first", "second", "second"));
}

TEST_F(SettingsTest, AHandlerRegisteredDuringARoundHearsTheNextOne)
{
    int count = 0;
    const auto late = [&count] { ++count; };
    settings.addOnConfigurationChangeEvent([&] { settings.addOnConfigurationChangeEvent(late); });

    settings.setStartAtLogin(true);
    EXPECT_EQ(count, 0);
    settings.setStartAtLogin(true);
    EXPECT_EQ(count, 1);
}

TEST_F(SettingsTest, ANewPasswordMayNotBeEmptyWhateverTheConfirmation)
{
    EXPECT_EQ(refusalOf("", ""), "The password cannot be empty");
    EXPECT_EQ(refusalOf("", "other"), "The password cannot be empty");
}

TEST_F(SettingsTest, ANewPasswordOfOneCharacterIsTooShort)
{
    const std::string message = "The password cannot be smaller than 3 characters";
    EXPECT_EQ(refusalOf("a", "a"), message);
    EXPECT_EQ(refusalOf("a", "b"), message);
    EXPECT_EQ(refusalOf("e\u0301", "e\u0301"), message);
    EXPECT_EQ(refusalOf("\U0001F469\u200D\U0001F467", "\U0001F469\u200D\U0001F467"), message);
}

TEST_F(SettingsTest, ANewPasswordOfTwoCharactersIsAccepted)
{
    EXPECT_EQ(refusalOf("ab", "ab"), "");
    EXPECT_EQ(refusalOf("  ", "  "), "");
}

TEST_F(SettingsTest, ANewPasswordMustEqualItsConfirmation)
{
    EXPECT_EQ(refusalOf("abc", "abd"), "The passwords do not match");
    EXPECT_EQ(refusalOf("abc", "abc "), "The passwords do not match");
    EXPECT_EQ(refusalOf("abc", ""), "The passwords do not match");
    EXPECT_EQ(refusalOf("caf\u00E9", "cafe\u0301"), "");
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
