// The list of protected applications as it is stored and shown.
#include "SettingsTest.h"

#include <algorithm>

using testing::ElementsAre;
using testing::UnorderedElementsAre;

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
