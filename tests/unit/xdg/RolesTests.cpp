#include "linux/xdg/Roles.h"

#include <gtest/gtest.h>

namespace {

using Names = std::vector<std::string>;

Names rolesOf(const std::string& id, const Names& categories, bool terminal = false)
{
    xdg::DesktopEntry entry;
    entry.id = id;
    entry.categories = categories;
    entry.terminal = terminal;
    return xdg::Roles::shipped().of(entry);
}

const Names TERMINAL{"com.apple.Terminal"};
const Names MONITOR{"com.apple.ActivityMonitor"};
const Names KEYRING{"com.apple.keychainaccess"};
const Names SETTINGS{"com.apple.systempreferences"};

} // namespace

TEST(Roles, TerminalsAreKnownByTheirCategory)
{
    EXPECT_EQ(rolesOf("debian-xterm", {"System", "TerminalEmulator"}), TERMINAL);
    EXPECT_EQ(rolesOf("new.terminal", {"TerminalEmulator"}), TERMINAL);
    EXPECT_EQ(rolesOf("tmux", {"TerminalEmulator"}, true), Names());
}

TEST(Roles, MonitorsAreKnownByTwoCategoriesTogether)
{
    EXPECT_EQ(rolesOf("a.monitor", {"System", "Monitor"}), MONITOR);
    EXPECT_EQ(rolesOf("a.monitor", {"System"}), Names());
    EXPECT_EQ(rolesOf("a.monitor", {"Monitor"}), Names());
    EXPECT_EQ(rolesOf("htop", {"System", "Monitor", "ConsoleOnly"}), Names());
    EXPECT_EQ(rolesOf("org.kde.ksystemlog", {"System", "Monitor"}), Names());
    EXPECT_EQ(rolesOf("xfce4-taskmanager", {"System"}), MONITOR);
}

TEST(Roles, KeyringManagersAreKnownByTheirIds)
{
    EXPECT_EQ(rolesOf("org.gnome.seahorse.Application", {"Utility"}), KEYRING);
    EXPECT_EQ(rolesOf("org.keepassxc.KeePassXC", {"Utility", "Security"}), Names());
}

TEST(Roles, SettingsAreKnownByIdOrAsAPanel)
{
    EXPECT_EQ(rolesOf("org.gnome.Settings", {}), SETTINGS);
    EXPECT_EQ(rolesOf("gnome-wifi-panel", {"X-GNOME-Settings-Panel"}), SETTINGS);
    EXPECT_EQ(rolesOf("nm-connection-editor", {"Settings"}), Names());
    EXPECT_EQ(rolesOf("xfce4-mouse-settings", {"Settings", "DesktopSettings"}), Names());
}

TEST(Roles, EarlierOnesOfTheListArePreferred)
{
    const xdg::Roles roles("[role]\nApplications=a;b;\nCategories=C;\n");

    EXPECT_LT(roles.preference("role", "a"), roles.preference("role", "b"));
    EXPECT_LT(roles.preference("role", "b"), roles.preference("role", "other"));
}

TEST(Roles, AnyTextIsTaken)
{
    const xdg::Roles roles("[role\nApplications\n=\nCategories=+;-;*;+A;\n");

    EXPECT_TRUE(roles.of(xdg::DesktopEntry()).size() <= 1);
}
