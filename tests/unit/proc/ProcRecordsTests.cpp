#include "linux/proc/ProcRecords.h"

#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;
using Application = std::optional<std::string>;

} // namespace

TEST(ProcRecords, EnvironmentTellsTheDisplaysAndWhatWasLaunched)
{
    const std::string text = "A=b\0DISPLAY=:1\0WAYLAND_DISPLAY=wayland-0\0"
                             "GIO_LAUNCHED_DESKTOP_FILE=/x/foo.desktop\0"
                             "GIO_LAUNCHED_DESKTOP_FILE_PID=42\0"s;

    EXPECT_EQ(
        proc::parseEnvironment(text, 42),
        (proc::ProcessEnvironment{"/x/foo.desktop", ":1", "wayland-0"})
    );
    EXPECT_EQ(proc::parseEnvironment(text, 43), (proc::ProcessEnvironment{{}, ":1", "wayland-0"}))
        << "inherited from the process that was launched";
}

TEST(ProcRecords, DamagedEnvironmentTellsNothing)
{
    EXPECT_EQ(proc::parseEnvironment("", 42), proc::ProcessEnvironment());
    EXPECT_EQ(proc::parseEnvironment("\0\0\0"s, 42), proc::ProcessEnvironment());
    EXPECT_EQ(
        proc::parseEnvironment(
            "GIO_LAUNCHED_DESKTOP_FILE_PID=42x\0GIO_LAUNCHED_DESKTOP_FILE=/x"s, 42
        ),
        proc::ProcessEnvironment()
    );
}

TEST(ProcRecords, ControlGroupNamesItsApplication)
{
    const auto of = [](const std::string& unit) {
        return proc::applicationOfCgroup(
            "0::/user.slice/user-1000.slice/user@1000.service/app.slice/" + unit + "\n"
        );
    };

    EXPECT_EQ(of("app-gnome-org.gnome.Calculator-1234.scope"), Application("org.gnome.Calculator"));
    EXPECT_EQ(of("app-org.gnome.Calculator-1234.scope"), Application("org.gnome.Calculator"));
    EXPECT_EQ(of("app-gnome-xfce4\\x2dterminal-7.scope"), Application("xfce4-terminal"));
    EXPECT_EQ(of("app-org.gnome.Terminal@autostart.service"), Application("org.gnome.Terminal"));
    EXPECT_EQ(of("app-flatpak-org.gnome.Maps-99.scope"), Application("org.gnome.Maps"));
    EXPECT_EQ(of("app-foo-1.scope/inner"), Application("foo"));
    EXPECT_EQ(of("snap.firefox.firefox.1234-5678.scope"), Application("firefox_firefox"));
}

TEST(ProcRecords, ControlGroupOfNoApplicationNamesNone)
{
    for (const std::string text :
         {"",
          "0::/",
          "0::/init.scope\n",
          "0::/user.slice/user-1000.slice/session-2.scope",
          "0::/app-",
          "0::/app-.scope",
          "0::/app-@.service",
          "0::/snap.",
          "0::/snap..x",
          "////"}) {
        EXPECT_EQ(proc::applicationOfCgroup(text), Application()) << text;
    }
}

TEST(ProcRecords, EscapesThatAreNoneStayAsTheyAre)
{
    EXPECT_EQ(proc::applicationOfCgroup("0::/app-a\\xzz\\x4-1.scope"), Application("a\\xzz\\x4"));
}

TEST(ProcRecords, OwnerIsTheRealUser)
{
    EXPECT_TRUE(proc::isOwnedBy("Name:\tfoo\nUid:\t1000\t0\t0\t0\n", 1000));
    EXPECT_FALSE(proc::isOwnedBy("Name:\tfoo\nUid:\t1000\t0\t0\t0\n", 0));
    EXPECT_FALSE(proc::isOwnedBy("Uid:\t1000", 1000)) << "that is the name of a process";
    EXPECT_FALSE(proc::isOwnedBy("\nUid:", 0));
    EXPECT_FALSE(proc::isOwnedBy("", 0));
}

TEST(ProcRecords, ThreadThatIsKilledIsEnding)
{
    EXPECT_TRUE(proc::isEnding("Name:\tfoo\nState:\tZ (zombie)\nSigPnd:\t0000000000000000\n"));
    EXPECT_TRUE(proc::isEnding("Name:\tfoo\nState:\tX (dead)\n"));
    EXPECT_TRUE(proc::isEnding("Name:\tfoo\nState:\tR (running)\nSigPnd:\t0000000000000100\n"));
    EXPECT_FALSE(proc::isEnding("Name:\tfoo\nState:\tS (sleeping)\nSigPnd:\t0000000000004200\n"));
    EXPECT_FALSE(proc::isEnding("Name:\tfoo\nState:\tS (sleeping)\nSigPnd:\tnonsense\n"));
    EXPECT_FALSE(proc::isEnding(""));
}

TEST(ProcRecords, StatusTellsAForkFromWhatHasExecutedSomething)
{
    const auto of = [](const std::string& flags) {
        return proc::parseStatus(
            "42 (foo) S 7 5 6 34816 8 " + flags + " 10 11 12 13 14 15 16 17 18 19 20 0 4711 22\n"
        );
    };

    EXPECT_TRUE(of("4194368")->isFork);
    EXPECT_FALSE(of("4194560")->isFork);
    EXPECT_FALSE(of("unknown")->isFork);
}
