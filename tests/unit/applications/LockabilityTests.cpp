#include "applications/SystemApplicationsService.h"
#include "fakes/Applications.h"
#include "fakes/FakePlatform.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using platform::ActivationPolicy;
using testing::ElementsAre;
using testing::IsEmpty;

class LockabilityTest : public testing::Test
{
protected:
    fakes::FakePlatform platform;
    applications::SystemApplicationsService service;
    platform::RunningApplication application =
        fakes::runningApplication(100, "org.example.Alpha", "Alpha");

    [[nodiscard]] bool isLockable() const { return service.isLockableApplication(application); }

    [[nodiscard]] bool isEntityLockable(const std::string& identifier) const
    {
        return service.isLockableApplicationEntity(
            applications::ApplicationEntity("Name", identifier, nullptr)
        );
    }

    [[nodiscard]] std::vector<std::string> administrativeIdentifiers() const
    {
        std::vector<std::string> result;
        for (const auto& entity : service.administrativeApplications()) {
            result.push_back(entity->bundleIdentifier);
        }
        return result;
    }
};

} // namespace

TEST_F(LockabilityTest, AnyInstalledApplicationIsLockable)
{
    EXPECT_TRUE(isEntityLockable("org.example.Alpha"));
    EXPECT_TRUE(isEntityLockable("com.apple.systempreferences"));
}

TEST_F(LockabilityTest, ThisProgramAndItsHelperAreNotLockableOnDisk)
{
    EXPECT_FALSE(isEntityLockable("com.quorvent.Tarvel"));
    EXPECT_FALSE(isEntityLockable("com.quorvent.OlvoHelper"));
}

TEST_F(LockabilityTest, ThisProgramAndItsHelperAreNotLockableRunning)
{
    application.bundleIdentifier = "com.quorvent.Tarvel";
    EXPECT_FALSE(isLockable());
    application.bundleIdentifier = "com.quorvent.OlvoHelper";
    EXPECT_FALSE(isLockable());
}

TEST_F(LockabilityTest, BannedIdentifiersAreCaseSensitive)
{
    EXPECT_TRUE(isEntityLockable("com.quorvent.tarvel"));
    application.bundleIdentifier = "COM.QUORVENT.TARVEL";
    EXPECT_TRUE(isLockable());
}

TEST_F(LockabilityTest, TheWhiteListGoesBeforeEveryOtherTest)
{
    application.bundleIdentifier = "com.apple.systempreferences";
    application.executableUrl = "/System/Library/Preferences";
    for (const ActivationPolicy policy :
         {ActivationPolicy::Regular, ActivationPolicy::Accessory, ActivationPolicy::Prohibited}) {
        application.activationPolicy = policy;
        EXPECT_TRUE(isLockable());
    }

    application.localizedName.reset();
    application.executableUrl.reset();
    application.bundleUrl.reset();
    EXPECT_TRUE(isLockable());
}

TEST_F(LockabilityTest, RegularAndAccessoryProcessesAreLockableAndBackgroundOnesAreNot)
{
    application.activationPolicy = ActivationPolicy::Regular;
    EXPECT_TRUE(isLockable());
    application.activationPolicy = ActivationPolicy::Accessory;
    EXPECT_TRUE(isLockable());
    application.activationPolicy = ActivationPolicy::Prohibited;
    EXPECT_FALSE(isLockable());
}

TEST_F(LockabilityTest, AnExecutableOfTheSystemIsNotLockable)
{
    application.executableUrl = "/System/Applications/Foo.app/Contents/MacOS/Foo";
    EXPECT_FALSE(isLockable());
}

TEST_F(LockabilityTest, TheSystemsPrefixIncludesTheSlashAndItsCase)
{
    application.executableUrl = "/SystemTools/Foo";
    EXPECT_TRUE(isLockable());
    application.executableUrl = "/system/Foo";
    EXPECT_TRUE(isLockable());
    application.executableUrl = "/opt/System/Foo";
    EXPECT_TRUE(isLockable());
}

TEST_F(LockabilityTest, AProcessWithoutANameIsNotLockable)
{
    application.localizedName.reset();
    EXPECT_FALSE(isLockable());
}

TEST_F(LockabilityTest, AProcessWithoutAnExecutableIsNotLockable)
{
    application.executableUrl.reset();
    EXPECT_FALSE(isLockable());
}

TEST_F(LockabilityTest, AProcessWithoutABundleIsNotLockable)
{
    application.bundleUrl.reset();
    EXPECT_FALSE(isLockable());
}

TEST_F(LockabilityTest, AProcessWithoutAnIdentifierCanStillBeLockable)
{
    application.bundleIdentifier.reset();
    EXPECT_TRUE(isLockable());
}

TEST_F(LockabilityTest, TheAdministrativeGroupIsEmptyWhenNoneIsInstalled)
{
    EXPECT_THAT(service.administrativeApplications(), IsEmpty());
}

TEST_F(LockabilityTest, TheAdministrativeGroupKeepsTheOrderOfItsListAndSkipsWhatIsNotInstalled)
{
    fakes::installApplication(platform, "com.apple.ActivityMonitor", "A Monitor");
    fakes::installApplication(platform, "com.apple.Terminal", "Terminal");
    EXPECT_THAT(
        administrativeIdentifiers(), ElementsAre("com.apple.Terminal", "com.apple.ActivityMonitor")
    );

    fakes::installApplication(platform, "com.apple.keychainaccess", "Keys");
    EXPECT_THAT(
        administrativeIdentifiers(),
        ElementsAre("com.apple.Terminal", "com.apple.keychainaccess", "com.apple.ActivityMonitor")
    );
}
