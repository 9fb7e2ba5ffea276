#include "linux/x11/StartupMessages.h"

#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;
using Entry = std::optional<std::string>;

constexpr std::size_t PIECE = 20;

/// As a launcher sends it: in pieces of 20 bytes, the last one filled with NUL.
std::optional<std::string>
send(x11::StartupMessages& messages, std::uint32_t window, const std::string& text)
{
    const std::string padded = text + std::string(PIECE - text.size() % PIECE, '\0');
    std::optional<std::string> whole;
    for (std::size_t begin = 0; begin < padded.size(); begin += PIECE) {
        whole = messages.add(window, begin == 0, std::string_view(padded).substr(begin, PIECE));
    }
    return whole;
}

} // namespace

TEST(StartupMessages, PiecesMakeAMessage)
{
    x11::StartupMessages messages;
    const std::string text = "new: ID=panel_TIME123 NAME=Foo APPLICATION_ID=/x/foo.desktop";

    EXPECT_EQ(send(messages, 7, text), text);
    EXPECT_EQ(send(messages, 7, "remove: ID=x"), "remove: ID=x");
}

TEST(StartupMessages, LaunchersDoNotDisturbEachOther)
{
    x11::StartupMessages messages;

    EXPECT_FALSE(messages.add(1, true, "new: ID=one     long").has_value());
    EXPECT_FALSE(messages.add(2, true, "new: ID=two     long").has_value());
    EXPECT_EQ(messages.add(1, false, "er\0"s), "new: ID=one     longer");
    EXPECT_EQ(messages.add(2, false, "\0"s), "new: ID=two     long");
}

TEST(StartupMessages, WhatHasNoBeginningOrNoEndIsDropped)
{
    x11::StartupMessages messages;

    EXPECT_FALSE(messages.add(1, false, "new: ID=x\0"s).has_value());
    messages.add(1, true, "new: ");
    for (int count = 0; count < 10000; ++count) {
        EXPECT_FALSE(messages.add(1, false, std::string(PIECE, 'x')).has_value());
    }
    EXPECT_FALSE(messages.add(1, false, "\0"s).has_value());
}

TEST(StartupMessages, AnnouncedEntryIsFound)
{
    EXPECT_EQ(
        x11::launchedEntry("new: ID=a APPLICATION_ID=/x/foo.desktop"), Entry("/x/foo.desktop")
    );
    EXPECT_EQ(x11::launchedEntry("new: APPLICATION_ID=foo.desktop ID=a"), Entry("foo.desktop"));
    EXPECT_EQ(
        x11::launchedEntry(R"(new: NAME="a APPLICATION_ID=/no" APPLICATION_ID="/with \"blank")"),
        Entry("/with \"blank")
    );
    EXPECT_EQ(x11::launchedEntry(R"(new: NAME=a\ b APPLICATION_ID=/x)"), Entry("/x"));
}

TEST(StartupMessages, OtherMessagesAnnounceNothing)
{
    for (const std::string text :
         {"",
          "new:",
          "new: ID",
          "new: ID=a",
          "new: APPLICATION_ID=",
          "remove: APPLICATION_ID=/x",
          "change: APPLICATION_ID=/x"}) {
        EXPECT_EQ(x11::launchedEntry(text), Entry()) << text;
    }
}
