// What is learned of processes that show the windows of an application, and what applications
// share.
#include "RecognitionDesktop.h"

#include <gtest/gtest.h>

using namespace xdg_tests;

namespace {

xdg::Catalogue catalogueWith(std::vector<xdg::InstalledApplication> applications)
{
    return xdg::Catalogue(
        {.applications = std::move(applications),
         .interpreters = {PYTHON},
         .searchFolders = {"/usr/bin"}},
        [](const auto&, const auto&) { return 0U; }
    );
}

xdg::InstalledApplication applicationOf(const std::string& id, xdg::ExecutionKey key)
{
    xdg::InstalledApplication application;
    application.entry.id = id;
    application.keys = {std::move(key)};
    return application;
}

proc::ProcessFacts process(const std::string& executable, Words arguments)
{
    proc::ProcessFacts facts;
    facts.executable = executable;
    facts.arguments = std::move(arguments);
    return facts;
}

} // namespace

TEST(Learning, ProgramBehindAWrapperIsLearned)
{
    const auto catalogue = catalogueWith({applicationOf("foo", script("/usr/bin/foo"))});

    const auto key = catalogue.keyToLearn(process("/opt/foo/real", {"real"}), "foo");

    ASSERT_TRUE(key.has_value());
    EXPECT_EQ(*key, executable("/opt/foo/real"));
}

TEST(Learning, ScriptIsLearnedAndNeverItsInterpreter)
{
    const auto catalogue = catalogueWith({applicationOf("foo", script("/usr/bin/foo"))});

    EXPECT_EQ(
        *catalogue.keyToLearn(process(PYTHON, {"python3", "/opt/foo/main.py"}), "foo"),
        script("/opt/foo/main.py")
    );
    EXPECT_FALSE(catalogue.keyToLearn(process(PYTHON, {"python3", "main.py"}), "foo").has_value());
    EXPECT_FALSE(catalogue.keyToLearn(process(PYTHON, {"python3", "-m", "foo"}), "foo").has_value()
    );
    EXPECT_FALSE(catalogue.keyToLearn(process("/usr/bin/bwrap", {"bwrap"}), "foo").has_value());
    EXPECT_FALSE(catalogue.keyToLearn(process(LOADER, {"ld.so", "/opt/x"}), "foo").has_value());
}

TEST(Learning, InterpreterOfAnyMakeIsNotLearned)
{
    const auto catalogue = catalogueWith({applicationOf("foo", script("/usr/bin/foo"))});

    for (const std::string name :
         {"mono-sgen",
          "python3-dbg",
          "python3.11-dbg",
          "perl5.36-x86_64-linux-gnu",
          "luajit-2.1.0-beta3"}) {
        EXPECT_EQ(
            catalogue.keyToLearn(process("/opt/bin/" + name, {name, "/opt/foo/main"}), "foo"),
            script("/opt/foo/main")
        ) << name;
    }
}

TEST(Learning, ProgramForEverybodyIsNotLearned)
{
    const auto catalogue = catalogueWith({applicationOf("foo", script("/usr/bin/foo"))});

    for (const std::string name : {"ssh", "love", "xpra"}) {
        EXPECT_FALSE(catalogue.keyToLearn(process("/usr/bin/" + name, {name}), "foo").has_value())
            << name;
    }
    EXPECT_FALSE(
        catalogue.keyToLearn(process(PYTHON, {"python3", "/usr/bin/xpra"}), "foo").has_value()
    );
    EXPECT_TRUE(catalogue.keyToLearn(process("/usr/bin/foo.d/real", {"real"}), "foo").has_value());
}

TEST(Learning, NothingIsLearnedWhereItWouldTellTooLittle)
{
    const auto catalogue = catalogueWith(
        {applicationOf("bar", executable("/usr/bin/bar")),
         applicationOf("calc", script(SOFFICE, {"--calc"})),
         applicationOf("foo", executable("/usr/bin/foo")),
         applicationOf("writer", script(SOFFICE, {"--writer"}))}
    );

    EXPECT_FALSE(catalogue.keyToLearn(process("/usr/bin/bar", {"bar"}), "foo").has_value());
    EXPECT_FALSE(catalogue.keyToLearn(process("/opt/soffice.bin", {"x"}), "calc").has_value())
        << "its siblings execute the same";
    EXPECT_FALSE(catalogue.keyToLearn(process("", {"foo"}), "foo").has_value());
    EXPECT_FALSE(catalogue.keyToLearn(process("/opt/x", {"x"}), "unknown").has_value());
}

TEST(Sharing, ApplicationsOfOneFileShareTheirProgram)
{
    const auto catalogue = catalogueWith(
        {applicationOf("calc", script(SOFFICE, {"--calc"})),
         applicationOf("foo", executable("/usr/bin/foo")),
         applicationOf("writer", script(SOFFICE, {"--writer"}))}
    );

    EXPECT_TRUE(catalogue.shareProgram("calc", "writer"));
    EXPECT_TRUE(catalogue.shareProgram("writer", "calc"));
    EXPECT_FALSE(catalogue.shareProgram("calc", "foo"));
    EXPECT_FALSE(catalogue.shareProgram("calc", "unknown"));
    EXPECT_TRUE(catalogue.mayHandOver("calc", "writer"));
    EXPECT_FALSE(catalogue.mayHandOver("calc", "foo"));
    EXPECT_FALSE(catalogue.mayHandOver("calc", "unknown"));
    EXPECT_FALSE(catalogue.mayHandOver("unknown", "calc"));
}

TEST(Sharing, ApplicationsOfOneLauncherLeaveNothingToEachOther)
{
    const auto catalogue = catalogueWith(
        {applicationOf("firefox_firefox", shared("/usr/bin/snap", {}, "firefox")),
         applicationOf("org.gnome.Maps", shared("/usr/bin/flatpak", {"run", "org.gnome.Maps"})),
         applicationOf("org.videolan.VLC", shared("/usr/bin/flatpak", {"run", "org.videolan.VLC"})),
         applicationOf("snap", executable("/usr/bin/snap")),
         applicationOf("vlc_vlc", shared("/usr/bin/snap", {}, "vlc"))}
    );

    EXPECT_TRUE(catalogue.shareProgram("org.gnome.Maps", "org.videolan.VLC"));
    EXPECT_FALSE(catalogue.mayHandOver("org.gnome.Maps", "org.videolan.VLC"));
    EXPECT_FALSE(catalogue.mayHandOver("firefox_firefox", "vlc_vlc"));
    EXPECT_FALSE(catalogue.mayHandOver("firefox_firefox", "snap"));
    EXPECT_FALSE(catalogue.mayHandOver("snap", "firefox_firefox"));
}
