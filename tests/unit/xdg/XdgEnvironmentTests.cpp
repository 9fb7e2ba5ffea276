#include "linux/xdg/XdgEnvironment.h"

#include <map>

#include <gtest/gtest.h>

namespace {

using Names = std::vector<std::string>;

xdg::XdgEnvironment environmentOf(std::map<std::string, std::string> variables)
{
    return xdg::XdgEnvironment::from([variables = std::move(variables)](const char* name) {
        const auto found = variables.find(name);
        return found == variables.end() ? std::nullopt : std::optional(found->second);
    });
}

} // namespace

TEST(XdgEnvironment, UnsetVariablesHaveTheAgreedValues)
{
    const auto environment = environmentOf({{"HOME", "/home/user"}});

    EXPECT_EQ(environment.configHome, "/home/user/.config");
    EXPECT_EQ(
        environment.dataFolders,
        (Names{
            "/home/user/.local/share",
            "/usr/local/share",
            "/usr/share",
            "/home/user/.local/share/flatpak/exports/share",
            "/var/lib/flatpak/exports/share",
            "/var/lib/snapd/desktop"})
    );
    EXPECT_FALSE(environment.programFolders.empty());
    EXPECT_TRUE(environment.desktops.empty());
    EXPECT_EQ(environment.locale, "C");
}

TEST(XdgEnvironment, SetVariablesCount)
{
    const auto environment = environmentOf(
        {{"HOME", "/home/user"},
         {"XDG_CONFIG_HOME", "/config"},
         {"XDG_DATA_HOME", "/data"},
         {"XDG_DATA_DIRS", "/one:/two"},
         {"PATH", "/bin::/sbin"},
         {"XDG_CURRENT_DESKTOP", "ubuntu:GNOME"},
         {"LANG", "de_DE.UTF-8"}}
    );

    EXPECT_EQ(environment.configHome, "/config");
    EXPECT_EQ(environment.dataFolders[0], "/data");
    EXPECT_EQ(environment.dataFolders[1], "/one");
    EXPECT_EQ(environment.dataFolders[2], "/two");
    EXPECT_EQ(environment.programFolders, (Names{"/bin", "/sbin"}));
    EXPECT_EQ(environment.desktops, (Names{"ubuntu", "GNOME"}));
    EXPECT_EQ(environment.locale, "de_DE.UTF-8");
}

TEST(XdgEnvironment, EmptyAndRelativeValuesDoNotCount)
{
    const auto environment = environmentOf(
        {{"HOME", "/home/user"},
         {"XDG_CONFIG_HOME", "relative"},
         {"XDG_DATA_HOME", ""},
         {"XDG_DATA_DIRS", "relative:/one"}}
    );

    EXPECT_EQ(environment.configHome, "/home/user/.config");
    EXPECT_EQ(environment.dataFolders[0], "/home/user/.local/share");
    EXPECT_EQ(environment.dataFolders[1], "/one");
}

TEST(XdgEnvironment, MessagesHaveALocaleOfTheirOwn)
{
    EXPECT_EQ(environmentOf({{"LANG", "a"}, {"LC_MESSAGES", "b"}}).locale, "b");
    EXPECT_EQ(environmentOf({{"LANG", "a"}, {"LC_MESSAGES", "b"}, {"LC_ALL", "c"}}).locale, "c");
}
