#include "platform/Text.h"

#include <gtest/gtest.h>

namespace text = platform::text;

TEST(Text, CharactersAreCountedAsUsersPerceiveThem)
{
    EXPECT_EQ(text::characterCount(""), 0U);
    EXPECT_EQ(text::characterCount("a"), 1U);
    EXPECT_EQ(text::characterCount("e\u0301"), 1U);
    EXPECT_EQ(text::characterCount("\U0001F469\u200D\U0001F469\u200D\U0001F467"), 1U);
    EXPECT_EQ(text::characterCount("\U0001F1E9\U0001F1EA"), 1U);
    EXPECT_EQ(text::characterCount("  "), 2U);
}

TEST(Text, PrecomposedAndDecomposedLettersAreEqual)
{
    EXPECT_TRUE(text::canonicallyEqual("caf\u00E9", "cafe\u0301"));
    EXPECT_TRUE(text::canonicallyEqual("\u212B", "\u00C5"));
}

TEST(Text, EqualityKeepsCaseBlanksAndCompatibilityFormsApart)
{
    EXPECT_FALSE(text::canonicallyEqual("Secret", "secret"));
    EXPECT_FALSE(text::canonicallyEqual("secret ", "secret"));
    EXPECT_FALSE(text::canonicallyEqual("\uFB01", "fi"));
    EXPECT_FALSE(text::canonicallyEqual("", "\u200B"));
}

TEST(Text, IllFormedTextEqualsOnlyItself)
{
    EXPECT_TRUE(text::canonicallyEqual("a\xFF", "a\xFF"));
    EXPECT_FALSE(text::canonicallyEqual("a\xFF", "a\xFE"));
    EXPECT_FALSE(text::canonicallyEqual("a\xFF", "a\uFFFD"));
}

TEST(Text, LowercaseFoldsBeyondAscii)
{
    EXPECT_EQ(text::lowercase("FIREFOX"), "firefox");
    EXPECT_EQ(text::lowercase("\u00C4RZTE"), "\u00E4rzte");
    EXPECT_EQ(text::lowercase("I"), "i");
}

TEST(Text, AsciiOrderIsByteWiseWithTheShorterFirst)
{
    EXPECT_LT(text::compare("app10", "app9"), 0);
    EXPECT_LT(text::compare("1password", "alpha"), 0);
    EXPECT_LT(text::compare("app", "apple"), 0);
    EXPECT_LT(text::compare("Zeta", "alpha"), 0);
    EXPECT_EQ(text::compare("same", "same"), 0);
}

TEST(Text, OtherOrderIsRootCollation)
{
    EXPECT_LT(text::compare("\u00E4rzte", "zebra"), 0);
    EXPECT_GT(text::compare("zebra", "\u00E4rzte"), 0);
    EXPECT_LT(text::compare("\u00E9clair", "z"), 0);
}

TEST(Text, EqualCollationKeysAreOrderedByTheirBytes)
{
    const int order = text::compare("e\u0301", "\u00E9");

    EXPECT_NE(order, 0);
    EXPECT_EQ(order, -text::compare("\u00E9", "e\u0301"));
}

TEST(Text, TrimmingTakesWhiteSpaceAndLineBreaksFromBothEnds)
{
    EXPECT_EQ(text::trimmed(" \t\r\n a b \u00A0\u2028"), "a b");
    EXPECT_EQ(text::trimmed("   "), "");
    EXPECT_EQ(text::trimmed(""), "");
}

TEST(Text, ValidityOfUtf8IsChecked)
{
    EXPECT_TRUE(text::isValidUtf8("p\u00E4ss\U0001F511"));
    EXPECT_FALSE(text::isValidUtf8("\xC3"));
    EXPECT_FALSE(text::isValidUtf8("\xED\xA0\x80"));
    EXPECT_FALSE(text::isValidUtf8("\xC0\x80"));
}
