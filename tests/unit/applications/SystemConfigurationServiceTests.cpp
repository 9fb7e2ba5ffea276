#include "applications/SystemConfigurationService.h"
#include "fakes/FakePlatform.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SystemConfigurationServiceTest : public testing::Test
{
protected:
    fakes::FakePlatform platform;
    applications::SystemConfigurationService service;

    bool darkModeOnWith(const platform::DefaultsValue& style)
    {
        platform.userDefaults.domains["NSGlobalDomain"]["AppleInterfaceStyle"] = style;
        return service.darkModeOn();
    }
};

} // namespace

TEST_F(SystemConfigurationServiceTest, DarkInAnyCaseIsDark)
{
    EXPECT_TRUE(darkModeOnWith("Dark"));
    EXPECT_TRUE(darkModeOnWith("DARK"));
    EXPECT_TRUE(darkModeOnWith("dark"));
}

TEST_F(SystemConfigurationServiceTest, AnyOtherStyleIsNotDark)
{
    EXPECT_FALSE(darkModeOnWith("Light"));
    EXPECT_FALSE(darkModeOnWith("Auto"));
    EXPECT_FALSE(darkModeOnWith("Dark "));
    EXPECT_FALSE(darkModeOnWith(""));
}

TEST_F(SystemConfigurationServiceTest, AStyleThatIsNoTextIsNotDark)
{
    EXPECT_FALSE(darkModeOnWith(true));
    EXPECT_FALSE(darkModeOnWith(platform::OpaqueValue{}));
}

TEST_F(SystemConfigurationServiceTest, AMissingStyleOrDomainIsNotDark)
{
    EXPECT_FALSE(service.darkModeOn());
    platform.userDefaults.domains["NSGlobalDomain"] = {};
    EXPECT_FALSE(service.darkModeOn());
}

TEST_F(SystemConfigurationServiceTest, TheAppearanceIsReadAfreshAtEachCall)
{
    EXPECT_TRUE(darkModeOnWith("Dark"));
    EXPECT_FALSE(darkModeOnWith("Light"));
    EXPECT_TRUE(darkModeOnWith("Dark"));
}

TEST_F(SystemConfigurationServiceTest, StartAtLoginSwitchesTheLoginItemOfTheHelper)
{
    EXPECT_TRUE(service.startAtLogin(true));
    EXPECT_TRUE(service.startAtLogin(false));

    EXPECT_THAT(
        platform.calls,
        ElementsAre(
            "loginItems setEnabled com.quorvent.OlvoHelper true",
            "loginItems setEnabled com.quorvent.OlvoHelper false"
        )
    );
}

TEST_F(SystemConfigurationServiceTest, DisablingWhatWasNeverEnabledGivesThePlatformsAnswer)
{
    EXPECT_TRUE(service.startAtLogin(false));

    platform.loginItems.failing = true;
    EXPECT_FALSE(service.startAtLogin(false));
    EXPECT_THAT(platform.log.lines, IsEmpty());
    EXPECT_THAT(platform.log.diagnostics, IsEmpty());
}
