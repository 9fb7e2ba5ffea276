#include "linux/x11/Strength.h"

#include <gtest/gtest.h>

namespace {

x11::Extensions everything()
{
    x11::Extensions extensions;
    extensions.randr = true;
    extensions.xinput = true;
    extensions.xtest = true;
    extensions.res = true;
    extensions.xkb = true;
    return extensions;
}

TEST(Strength, SaysWhatACompleteDisplayStillAllows)
{
    EXPECT_EQ(
        "protection on X11: screens are covered, keyboard and pointer captured; programs that"
        " listen to raw input can still see keys",
        x11::strength(everything(), x11::Session::X11)
    );
}

TEST(Strength, NamesEveryMissingExtension)
{
    x11::Extensions extensions = everything();
    extensions.xinput = false;
    extensions.xtest = false;
    const std::string text = x11::strength(extensions, x11::Session::X11);
    EXPECT_NE(std::string::npos, text.find("cannot be captured"));
    EXPECT_NE(std::string::npos, text.find("; missing: XInput 2"));
    EXPECT_NE(std::string::npos, text.find(", XTEST"));
    EXPECT_EQ(std::string::npos, text.find("RandR"));
}

TEST(Strength, PromisesNothingForTheOtherProgramsOfAWaylandSession)
{
    const std::string text = x11::strength(everything(), x11::Session::Wayland);
    EXPECT_NE(std::string::npos, text.find("only programs that use X11 are covered"));
    EXPECT_EQ(std::string::npos, text.find("protection on X11"));
}

} // namespace
