#include "linux/session/SessionMessage.h"
#include "linux/session/SessionName.h"
#include "processes/Environment.h"

#include <gtest/gtest.h>

namespace {

std::string nameOn(const char* wayland, const char* x11, const std::string& program = "Tarvel")
{
    const processes::EnvironmentVariable waylandDisplay("WAYLAND_DISPLAY", wayland);
    const processes::EnvironmentVariable display("DISPLAY", x11);
    return session::sessionName(program);
}

std::string nameOf(const std::string& program)
{
    return nameOn("", "", program);
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

TEST(SessionName, OddNamesMakeShortPlainFileNames)
{
    EXPECT_EQ(nameOf("a/../b"), "a_2f.._2fb@no-display");
    EXPECT_NE(nameOf("a:b"), nameOf("a_3ab"));
    const std::string longName(500, 'x');
    EXPECT_EQ(nameOf(longName).size(), 16U + std::string("@no-display").size());
    EXPECT_NE(nameOf(longName), nameOf(longName + "x"));
}

TEST(SessionName, OddDisplaysMakeShortPlainFileNames)
{
    EXPECT_EQ(nameOn("a/../b", ""), "Tarvel@a_2f.._2fb");
    EXPECT_NE(nameOn("a:b", ""), nameOn("a_3ab", ""));
    const std::string longName(500, 'x');
    EXPECT_EQ(nameOn(longName.c_str(), "").size(), std::string("Tarvel@").size() + 16U);
    EXPECT_NE(nameOn(longName.c_str(), ""), nameOn((longName + "x").c_str(), ""));
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
