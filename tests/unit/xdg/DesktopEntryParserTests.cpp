#include "linux/xdg/DesktopEntryParser.h"

#include <gtest/gtest.h>

namespace {

using Names = std::vector<std::string>;

std::optional<xdg::DesktopEntry> parse(const std::string& text, const std::string& locale = "C")
{
    return xdg::DesktopEntryParser(xdg::localeNames(locale)).parse(text);
}

/// An entry with the lines behind those that every entry needs.
std::string entryWith(const std::string& lines)
{
    return "[Desktop Entry]\nType=Application\nName=Foo\nExec=foo\n" + lines;
}

} // namespace

TEST(DesktopEntryParser, EntryIsReadFieldByField)
{
    const auto entry =
        parse("# comment\n\n[Desktop Entry]\n"
              "Type=Application\nName = Foo Bar \nExec=foo --new %U\nTryExec=foo\nPath=/opt/foo\n"
              "Icon=org.foo\nStartupWMClass=Foo\nCategories=System;Monitor;\n"
              "OnlyShowIn=GNOME;XFCE;\nNotShowIn=KDE\n"
              "NoDisplay=true\nTerminal=true\n");

    ASSERT_TRUE(entry.has_value());
    EXPECT_EQ(entry->name, "Foo Bar");
    EXPECT_EQ(entry->exec, "foo --new %U");
    EXPECT_EQ(entry->tryExec, "foo");
    EXPECT_EQ(entry->workingFolder, "/opt/foo");
    EXPECT_EQ(entry->icon, "org.foo");
    EXPECT_EQ(entry->startupWindowClass, "Foo");
    EXPECT_EQ(entry->categories, (Names{"System", "Monitor"}));
    EXPECT_EQ(entry->onlyShowIn, (Names{"GNOME", "XFCE"}));
    EXPECT_EQ(entry->notShowIn, Names{"KDE"});
    EXPECT_TRUE(entry->noDisplay);
    EXPECT_TRUE(entry->terminal);
    EXPECT_FALSE(entry->hidden);
}

TEST(DesktopEntryParser, NameIsTheOneOfTheUsersLanguage)
{
    const std::string text =
        entryWith("Name[de]=Deutsch\nName[de_AT]=Wien\nName[fr]=Fran\u00E7ais\n");

    EXPECT_EQ(parse(text, "de_AT.UTF-8")->name, "Wien");
    EXPECT_EQ(parse(text, "de_DE.UTF-8")->name, "Deutsch");
    EXPECT_EQ(parse(text, "fr")->name, "Fran\u00E7ais");
    EXPECT_EQ(parse(text, "es_ES.UTF-8")->name, "Foo");
    EXPECT_EQ(parse(text, "C")->name, "Foo");
}

TEST(DesktopEntryParser, LocaleIsTriedFromTheMostSpecialNameOn)
{
    EXPECT_EQ(
        xdg::localeNames("sr_RS.UTF-8@latin"), (Names{"sr_RS@latin", "sr_RS", "sr@latin", "sr"})
    );
    EXPECT_EQ(xdg::localeNames("de_DE.UTF-8"), (Names{"de_DE", "de"}));
    EXPECT_TRUE(xdg::localeNames("C.UTF-8").empty());
    EXPECT_TRUE(xdg::localeNames("POSIX").empty());
    EXPECT_TRUE(xdg::localeNames("").empty());
}

TEST(DesktopEntryParser, EscapesAreResolved)
{
    EXPECT_EQ(parse(entryWith("Icon=a\\sb\\\\c\n"))->icon, "a b\\c");
    EXPECT_EQ(parse(entryWith("Categories=a\\;b;c;;\n"))->categories, (Names{"a;b", "c"}));
}

TEST(DesktopEntryParser, OtherGroupsDoNotCount)
{
    const auto entry =
        parse(entryWith("\n[Desktop Action new]\nName=New\nExec=other\nHidden=true\n"));

    EXPECT_EQ(entry->name, "Foo");
    EXPECT_EQ(entry->exec, "foo");
    EXPECT_FALSE(entry->hidden);
}

TEST(DesktopEntryParser, FirstOfTwoEqualKeysCounts)
{
    EXPECT_EQ(parse(entryWith("Exec=other\n"))->exec, "foo");
}

TEST(DesktopEntryParser, WindowsLineEndsAreTaken)
{
    const auto entry = parse("[Desktop Entry]\r\nType=Application\r\nName=Foo\r\nExec=foo\r\n");

    ASSERT_TRUE(entry.has_value());
    EXPECT_EQ(entry->exec, "foo");
}

TEST(DesktopEntryParser, WhatIsNoApplicationIsRefused)
{
    EXPECT_FALSE(parse("").has_value());
    EXPECT_FALSE(parse("[Desktop Entry]\nType=Link\nName=Foo\nExec=foo\n").has_value());
    EXPECT_FALSE(parse("[Desktop Entry]\nName=Foo\nExec=foo\n").has_value());
    EXPECT_FALSE(parse("[Desktop Entry]\nType=Application\nExec=foo\n").has_value());
    EXPECT_FALSE(parse("[Desktop Entry]\nType=Application\nName=Foo\n").has_value());
    EXPECT_FALSE(parse("[Other]\nType=Application\nName=Foo\nExec=foo\n").has_value());
}

TEST(DesktopEntryParser, EntryThatTheBusStartsNeedsNoCommandLine)
{
    const auto entry = parse("[Desktop Entry]\nType=Application\nName=Foo\nDBusActivatable=true\n");

    EXPECT_TRUE(entry.has_value());
}

TEST(DesktopEntryParser, DeletedEntryNeedsNothingElse)
{
    const auto entry = parse("[Desktop Entry]\nHidden=true\n");

    ASSERT_TRUE(entry.has_value());
    EXPECT_TRUE(entry->hidden);
}

TEST(DesktopEntryParser, IllFormedNameIsAbsent)
{
    EXPECT_FALSE(parse("[Desktop Entry]\nType=Application\nName=\xFF\xFE\nExec=foo\n").has_value());
    EXPECT_EQ(parse(entryWith("Name[de]=\xC3\n"), "de_DE")->name, "Foo");
    EXPECT_TRUE(parse(entryWith("Comment=\xFF\n")).has_value());
}

TEST(DesktopEntryParser, CommandLineOfAMegabyteIsRefused)
{
    EXPECT_FALSE(parse(
                     "[Desktop Entry]\nType=Application\nName=Foo\nExec=foo " +
                     std::string(1024 * 1024, 'x') + "\n"
    )
                     .has_value());
}

TEST(DesktopEntryParser, NonsenseIsTaken)
{
    for (const std::string& text :
         {std::string("\0\0\0", 3),
          std::string("[["),
          std::string("]"),
          std::string("=\n==\n[=]\n[]\n"),
          std::string("[Desktop Entry]\nName[=x\nName]=y\nExec=\\\n"),
          std::string("[Desktop Entry"),
          std::string(10000, '[')}) {
        EXPECT_FALSE(parse(text).has_value());
    }
}
