#include "linux/session/SessionMessage.h"
#include "linux/session/SessionName.h"
#include "processes/Environment.h"

#include <gtest/gtest.h>

namespace {

std::string nameOn(const char* wayland, const char* x11)
{
    const processes::EnvironmentVariable waylandDisplay("WAYLAND_DISPLAY", wayland);
    const processes::EnvironmentVariable display("DISPLAY", x11);
    return session::sessionName("Tarvel");
}

} // namespace

TEST(SessionName, EveryProgramAndEveryDisplayHasItsOwn)
{
    EXPECT_NE(nameOn("", ":0"), nameOn("", ":1"));
    EXPECT_NE(nameOn("wayland-0", ""), nameOn("wayland-1", ""));
    EXPECT_NE(session::sessionName("Tarvel"), session::sessionName("OlvoHelper"));
}

TEST(SessionName, ScreensOfADisplayShareOne)
{
    EXPECT_EQ(nameOn("", ":0.0"), nameOn("", ":0"));
    EXPECT_EQ(nameOn("", "host.example.org:10.1"), nameOn("", "host.example.org:10"));
}

TEST(SessionName, AWaylandSessionIsOneWhateverItsX11DisplayIs)
{
    EXPECT_EQ(nameOn("wayland-0", ":0"), nameOn("wayland-0", ""));
}

TEST(SessionName, OddDisplaysMakeShortPlainFileNames)
{
    EXPECT_EQ(session::asFileName("a/../b"), "a_2f.._2fb");
    EXPECT_NE(session::asFileName("a:b"), session::asFileName("a_3ab"));
    const std::string longName(500, 'x');
    EXPECT_EQ(session::asFileName(longName).size(), 16U);
    EXPECT_NE(session::asFileName(longName), session::asFileName(longName + "x"));
}

TEST(SessionMessage, AnExitMessageGivesTheStatusThatAParentWouldSee)
{
    EXPECT_EQ(session::exitStatusIn(session::exitMessage(0)), 0);
    EXPECT_EQ(session::exitStatusIn(session::exitMessage(3)), 3);
    EXPECT_EQ(session::exitStatusIn(session::exitMessage(-1)), 255);
    EXPECT_EQ(session::exitStatusIn(session::exitMessage(256)), 0);
}

TEST(SessionMessage, AnythingElseGivesNoStatus)
{
    for (const char* text : {"", "exit ", "exit x", "exit 3x", "exit  3", "activate", "xexit 0"}) {
        EXPECT_EQ(session::exitStatusIn(text), std::nullopt) << text;
    }
}
