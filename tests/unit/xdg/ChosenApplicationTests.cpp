#include "linux/xdg/ChosenApplication.h"

#include <gtest/gtest.h>

namespace {

using Kind = xdg::ExecutionKey::Kind;

xdg::ChosenApplication example()
{
    return {
        .id = "org.example.Foo",
        .path = "/usr/share/applications/org.example.Foo.desktop",
        .name = "Foo; the \\ one\n\"and\" only",
        .icon = " foo ",
        .executable = "/opt/my apps/foo",
        .startupWindowClass = "Foo",
        .roles = {"com.apple.Terminal", "x;y"},
        .keys = {
            {Kind::Executable, "/opt/my apps/foo", {"--a;b", "", "=c"}, false, ""},
            {Kind::Script, "/usr/bin/foo", {}, false, ""},
            {Kind::Executable, "/usr/bin/flatpak", {"run", "foo"}, true, "foo"},
            {Kind::Script, "/usr/bin/xdg-open", {"https://foo"}, true, ""}}};
}

} // namespace

TEST(ChosenApplication, IsReadBackAsItWasWritten)
{
    xdg::ChosenApplications all;
    all["org.example.Foo"] = example();
    all["bare"].id = "bare";

    EXPECT_EQ(xdg::parseChosenApplications(xdg::textOf(all)), all);
}

TEST(ChosenApplication, DamagedLinesAreLeftOut)
{
    const auto all =
        xdg::parseChosenApplications("Name=of nobody\n[foo]\nName=Foo\nKey=\nKey=;;;\n"
                                     "Key=executable;relative;=;\nKey=executable;/x;y;\n"
                                     "Key=executable;/bin/foo;=;\n[");

    ASSERT_EQ(all.size(), 1U);
    ASSERT_EQ(all.at("foo").keys.size(), 1U);
    EXPECT_EQ(all.at("foo").keys.front().path, "/bin/foo");
}

TEST(ChosenApplication, KeysAreOnlyEverAdded)
{
    xdg::ChosenApplication known = example();
    xdg::ChosenApplication later = example();
    later.name = "New name";
    later.startupWindowClass = "Another";
    later.icon = "";
    later.keys = {{Kind::Executable, "/new/foo", {}, false, ""}, known.keys.front()};

    xdg::merge(known, later);

    EXPECT_EQ(known.keys.size(), 5U);
    EXPECT_EQ(known.keys.back().path, "/new/foo");
    EXPECT_EQ(known.name, "New name");
    EXPECT_EQ(known.icon, " foo ");
    EXPECT_EQ(known.startupWindowClass, "Foo");
}

TEST(ChosenApplication, NumberOfKeysHasALimit)
{
    xdg::ChosenApplication known;
    for (int number = 0; number < 200; ++number) {
        xdg::ChosenApplication later;
        later.keys = {{Kind::Executable, "/x/" + std::to_string(number), {}, false, ""}};
        xdg::merge(known, later);
    }

    EXPECT_EQ(known.keys.size(), 64U);
    EXPECT_EQ(known.keys.front().path, "/x/0");
    EXPECT_EQ(known.keys.back().path, "/x/199");
}
