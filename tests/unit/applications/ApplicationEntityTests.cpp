#include "applications/ApplicationEntity.h"
#include "fakes/Applications.h"
#include "fakes/FakePlatform.h"

#include <gtest/gtest.h>

namespace {

using applications::ApplicationEntity;
using applications::ApplicationEntityPtr;

constexpr auto PATH = "/Applications/Alpha.app";

class ApplicationEntityTest : public testing::Test
{
protected:
    fakes::FakePlatform platform;

    static std::string sourceOf(const platform::IconHandle& icon)
    {
        const auto* fake = dynamic_cast<const fakes::FakeIcon*>(icon.get());
        return fake == nullptr ? "no icon" : fake->source;
    }

    ApplicationEntityPtr entityOf(
        const std::optional<std::string>& name,
        const std::optional<std::string>& executable,
        const std::optional<std::string>& identifier
    )
    {
        platform.bundles.bundles[PATH] = {PATH, name, executable, identifier};
        return ApplicationEntity::fromApplicationPath(PATH);
    }
};

} // namespace

TEST_F(ApplicationEntityTest, ARecordWithoutASourceStopsTheProcess)
{
    EXPECT_DEATH(ApplicationEntity(), "init\\(\\)");
}

TEST_F(ApplicationEntityTest, AbsentStringsBecomeEmptyOnes)
{
    const ApplicationEntity entity(std::nullopt, std::nullopt, nullptr);

    EXPECT_EQ(entity.name, "");
    EXPECT_EQ(entity.bundleIdentifier, "");
    EXPECT_EQ(entity.icon, nullptr);
}

TEST_F(ApplicationEntityTest, TheTextualFormIsTheIdentifierAlone)
{
    const ApplicationEntity entity("Alpha", "org.example.Alpha", nullptr);

    EXPECT_EQ(entity.description(), "org.example.Alpha");
}

TEST_F(ApplicationEntityTest, FieldsAreWritable)
{
    ApplicationEntity entity("Alpha", "org.example.Alpha", nullptr);

    entity.name = "Beta";
    entity.bundleIdentifier = "org.example.Beta";
    entity.icon = std::make_shared<fakes::FakeIcon>("other");

    EXPECT_EQ(entity.name, "Beta");
    EXPECT_EQ(entity.description(), "org.example.Beta");
    EXPECT_EQ(sourceOf(entity.icon), "other");
}

TEST_F(ApplicationEntityTest, APathGivesTheBundlesNameIdentifierAndIcon)
{
    const ApplicationEntityPtr entity = entityOf("Alpha", "alpha", "org.example.Alpha");

    ASSERT_NE(entity, nullptr);
    EXPECT_EQ(entity->name, "Alpha");
    EXPECT_EQ(entity->bundleIdentifier, "org.example.Alpha");
    EXPECT_EQ(sourceOf(entity->icon), PATH);
}

TEST_F(ApplicationEntityTest, APathFallsBackToTheExecutablesName)
{
    EXPECT_EQ(entityOf(std::nullopt, "alpha", "org.example.Alpha")->name, "alpha");
    EXPECT_EQ(entityOf("", "alpha", "org.example.Alpha")->name, "alpha");
}

TEST_F(ApplicationEntityTest, APathWithoutAnyNameIsUnnamed)
{
    EXPECT_EQ(entityOf(std::nullopt, std::nullopt, "org.example.Alpha")->name, "Unnamed");
    EXPECT_EQ(entityOf("", "", "org.example.Alpha")->name, "Unnamed");
}

TEST_F(ApplicationEntityTest, APathWithoutAnIdentifierGivesNoRecord)
{
    EXPECT_EQ(entityOf("Alpha", "alpha", std::nullopt), nullptr);
    EXPECT_EQ(entityOf("Alpha", "alpha", ""), nullptr);
}

TEST_F(ApplicationEntityTest, APathWithoutABundleGivesNoRecord)
{
    EXPECT_EQ(ApplicationEntity::fromApplicationPath("/Applications/Gone.app"), nullptr);
}

TEST_F(ApplicationEntityTest, AnIdentifierGivesTheInstalledApplication)
{
    platform.workspace.installed["com.apple.Terminal"] = PATH;
    fakes::addBundle(platform, PATH, "Alpha", "org.example.Alpha");

    const ApplicationEntityPtr entity =
        ApplicationEntity::fromBundleIdentifier("com.apple.Terminal");

    ASSERT_NE(entity, nullptr);
    EXPECT_EQ(entity->name, "Alpha");
    EXPECT_EQ(entity->bundleIdentifier, "com.apple.Terminal");
    EXPECT_EQ(sourceOf(entity->icon), PATH);
}

TEST_F(ApplicationEntityTest, AnIdentifierDoesNotFallBackToTheExecutablesName)
{
    platform.workspace.installed["org.example.Alpha"] = PATH;
    platform.bundles.bundles[PATH] = {PATH, std::nullopt, "alpha", "org.example.Alpha"};

    EXPECT_EQ(ApplicationEntity::fromBundleIdentifier("org.example.Alpha")->name, "");
}

TEST_F(ApplicationEntityTest, AnIdentifierWhoseBundleCannotBeOpenedGivesANamelessRecord)
{
    platform.workspace.installed["org.example.Alpha"] = PATH;

    const ApplicationEntityPtr entity =
        ApplicationEntity::fromBundleIdentifier("org.example.Alpha");

    ASSERT_NE(entity, nullptr);
    EXPECT_EQ(entity->name, "");
    EXPECT_EQ(entity->bundleIdentifier, "org.example.Alpha");
    EXPECT_EQ(sourceOf(entity->icon), PATH);
}

TEST_F(ApplicationEntityTest, AnIdentifierThatIsNotInstalledGivesNoRecord)
{
    EXPECT_EQ(ApplicationEntity::fromBundleIdentifier("org.example.Gone"), nullptr);
}

TEST_F(ApplicationEntityTest, ARunningApplicationGivesItsNameIdentifierAndIcon)
{
    const ApplicationEntityPtr entity = ApplicationEntity::fromRunningApplication(
        fakes::runningApplication(100, "org.example.Alpha", "Alpha")
    );

    EXPECT_EQ(entity->name, "Alpha");
    EXPECT_EQ(entity->bundleIdentifier, "org.example.Alpha");
    EXPECT_EQ(sourceOf(entity->icon), "running org.example.Alpha");
}

TEST_F(ApplicationEntityTest, AProcessWithoutAnIdentifierGivesAnEmptyOne)
{
    const ApplicationEntityPtr entity = ApplicationEntity::fromRunningApplication({});

    ASSERT_NE(entity, nullptr);
    EXPECT_EQ(entity->name, "");
    EXPECT_EQ(entity->bundleIdentifier, "");
    EXPECT_EQ(entity->icon, nullptr);
}
