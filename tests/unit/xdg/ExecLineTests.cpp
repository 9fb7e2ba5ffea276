#include "linux/xdg/ExecLine.h"
#include "linux/xdg/KeyFile.h"

#include <gtest/gtest.h>

namespace {

using Words = std::vector<std::string>;
using xdg::ExecCommand;

struct Case
{
    const char* name;
    const char* exec;
    ExecCommand command;
};

class ExecLineTable : public testing::TestWithParam<Case>
{
};

} // namespace

TEST_P(ExecLineTable, NamesTheProgramAndItsFixedArguments)
{
    EXPECT_EQ(xdg::commandOf(GetParam().exec), GetParam().command) << GetParam().exec;
}

INSTANTIATE_TEST_SUITE_P(
    ExecLine,
    ExecLineTable,
    testing::Values(
        Case{"Plain", "foo", {"foo", {}}},
        Case{"FieldCodes", "foo %U --bar %i %c %k", {"foo", {"--bar"}}},
        Case{"FieldCodeInsideAWord", "foo --file=%f", {"foo", {"--file="}}},
        Case{"PercentSign", "foo 100%%", {"foo", {"100%"}}},
        Case{"QuotedPath", "\"/opt/a b/foo\" --x", {"/opt/a b/foo", {"--x"}}},
        Case{"EscapeInQuotes", "\"/opt/\\$foo\\\"\"", {"/opt/$foo\"", {}}},
        Case{"SingleQuotes", "foo 'a \"b' c", {"foo", {"a \"b", "c"}}},
        Case{"Env", "env GDK_BACKEND=x11 foo %u", {"foo", {}}},
        Case{"EnvWithOptions", "/usr/bin/env -u LANG -i A=b /usr/bin/foo", {"/usr/bin/foo", {}}},
        Case{"Assignment", "LANG=C foo", {"foo", {}}},
        Case{"Nice", "nice -n 10 foo --x", {"foo", {"--x"}}},
        Case{"NiceWithoutOptions", "nice foo", {"foo", {}}},
        Case{"Pkexec", "pkexec --user root /usr/sbin/foo", {"/usr/sbin/foo", {}}},
        Case{"Shell", "sh -c 'foo --bar'", {"foo", {"--bar"}}},
        Case{"ShellExec", "/bin/sh -c \"exec foo\"", {"foo", {}}},
        Case{"ShellThatPrepares", "bash -c 'cd /opt && A=b ./foo; true'", {"./foo", {}, "/opt"}},
        Case{"ShellThatGoesOn", "sh -c 'cd /opt; cd foo && ./foo'", {"./foo", {}, "/opt/foo"}},
        Case{"ShellThatGoesHome", "sh -c 'cd && foo; cd /opt'", {"foo", {}}},
        Case{"ShellInAShell", "sh -c \"cd /opt && sh -c './foo'\"", {"./foo", {}, "/opt"}},
        Case{"ShellThatReadsAnotherFile", "bash -c '. /opt/env && exec foo'", {"foo", {}}},
        Case{"LoginShell", "sh -lc 'foo'", {"foo", {}}},
        Case{"ShellOfAnotherMake", "mksh -c 'foo'", {"foo", {}}},
        Case{"ShellScript", "sh /opt/foo.sh", {"sh", {"/opt/foo.sh"}}},
        Case{
            "ShellThatDecides",
            "sh -c 'if [ -x foo ]; then foo; fi'",
            {"sh", {"-c", "if [ -x foo ]; then foo; fi"}}},
        Case{"ShellInABracket", "sh -c '(cd x; foo)'", {"sh", {"-c", "(cd x; foo)"}}},
        Case{"ShellThatAsksItsVariables", "sh -c '$FOO --x'", {"sh", {"-c", "$FOO --x"}}},
        Case{
            "ShellThatDecidesLater",
            "sh -c 'cd /x; for a in b; do c; done'",
            {"sh", {"-c", "cd /x; for a in b; do c; done"}}},
        Case{"WrapperInWrapper", "env A=b nice sh -c 'env C=d foo'", {"foo", {}}},
        Case{"Nohup", "nohup setsid foo", {"foo", {}}},
        Case{"Empty", "", {"", {}}},
        Case{"OnlyWrappers", "env A=b", {"", {}}},
        Case{"OnlyFieldCodes", "%U %f", {"", {}}},
        Case{"WithoutAName", "\"\" foo", {"", {}}},
        Case{"OpenQuote", "\"foo bar", {"foo bar", {}}},
        Case{"LastBackslash", "foo\\", {"foo\\", {}}}
    ),
    [](const auto& entry) { return entry.param.name; }
);

TEST(ExecLine, WrappersWithoutEndAreGivenUp)
{
    std::string exec;
    for (int count = 0; count < 1000; ++count) {
        exec += "env ";
    }

    EXPECT_EQ(xdg::commandOf(exec + "foo").program, "env");
}

TEST(ExecLine, QuotedArgumentIsReadBackAsItWas)
{
    for (const char* path :
         {"/usr/bin/foo",
          "/home/a user/Tarvel.app/x",
          "/a\"b",
          "/a\\b",
          "/a$b`c",
          "/100%/x",
          "/%U",
          "/line\nbreak",
          "/single'quote",
          ""}) {
        const std::string inFile = xdg::quotedForExec(path);
        EXPECT_EQ(inFile.find('\n'), std::string::npos);
        const ExecCommand command = xdg::commandOf(xdg::unescaped(inFile));
        EXPECT_EQ(command.program, path) << inFile;
        EXPECT_TRUE(command.fixedArguments.empty());
    }
}
