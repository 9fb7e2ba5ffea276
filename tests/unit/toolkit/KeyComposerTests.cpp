// Which characters come of dead keys and Compose sequences.
#include "fakes/FakePlatform.h"
#include "processes/Environment.h"
#include "toolkit/ComposeTable.h"
#include "toolkit/KeyComposer.h"

#include <cstdlib>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

constexpr std::uint32_t DEAD_ACUTE = 0xfe51;
constexpr std::uint32_t DEAD_DIAERESIS = 0xfe57;
constexpr std::uint32_t COMPOSE = 0xff20;
constexpr std::uint32_t SHIFT = 0xffe1;
constexpr std::uint32_t LEVEL_3_SHIFT = 0xfe03;
constexpr std::uint32_t CAPS_LOCK = 0xffe5;

const std::optional<QString> AS_USUAL = std::nullopt;
const std::optional<QString> WAITS = QString();

class KeyComposer : public testing::Test
{
protected:
    toolkit::ComposeTable table{"en_US.UTF-8"};
    toolkit::KeyComposer composer{table};
};

/// As a machine is on which the tables are not installed.
class WithoutTables : public testing::Test
{
protected:
    static constexpr auto NOWHERE = "/nonexistent";

    processes::EnvironmentVariable system{"XLOCALEDIR", NOWHERE};
    processes::EnvironmentVariable user{"XCOMPOSEFILE", NOWHERE};
    processes::EnvironmentVariable home{"HOME", NOWHERE};
};

} // namespace

TEST_F(KeyComposer, ADeadKeyAndALetterMakeOneCharacter)
{
    EXPECT_EQ(composer.press(DEAD_ACUTE), WAITS);
    EXPECT_EQ(composer.press('e'), QString::fromUtf8("é"));
    EXPECT_EQ(composer.press('e'), AS_USUAL);
}

TEST_F(KeyComposer, AComposeSequenceMakesOneCharacter)
{
    EXPECT_EQ(composer.press(COMPOSE), WAITS);
    EXPECT_EQ(composer.press('s'), WAITS);
    EXPECT_EQ(composer.press('s'), QString::fromUtf8("ß"));
}

TEST_F(KeyComposer, OtherKeysAreHandledAsUsual)
{
    for (const std::uint32_t symbol : {std::uint32_t{'e'}, SHIFT, std::uint32_t{0xff0d}}) {
        EXPECT_EQ(composer.press(symbol), AS_USUAL);
    }
}

TEST_F(KeyComposer, ModifiersBetweenTheKeysOfASequenceKeepIt)
{
    EXPECT_EQ(composer.press(DEAD_ACUTE), WAITS);
    for (const std::uint32_t modifier : {SHIFT, LEVEL_3_SHIFT, CAPS_LOCK}) {
        EXPECT_EQ(composer.press(modifier), AS_USUAL);
    }
    EXPECT_EQ(composer.press('E'), QString::fromUtf8("É"));
}

TEST_F(KeyComposer, ASequenceThatLeadsNowhereLeavesItsLastKeyAsItIs)
{
    EXPECT_EQ(composer.press(DEAD_ACUTE), WAITS);
    EXPECT_EQ(composer.press('x'), AS_USUAL);
    EXPECT_EQ(composer.press('e'), AS_USUAL);
}

TEST_F(KeyComposer, ResetForgetsWhatWaits)
{
    EXPECT_EQ(composer.press(DEAD_ACUTE), WAITS);
    composer.reset();
    EXPECT_EQ(composer.press('e'), AS_USUAL);
}

TEST_F(KeyComposer, FieldsDoNotMixTheirSequences)
{
    toolkit::KeyComposer other(table);
    EXPECT_EQ(composer.press(DEAD_ACUTE), WAITS);
    EXPECT_EQ(other.press(DEAD_DIAERESIS), WAITS);
    EXPECT_EQ(other.press('u'), QString::fromUtf8("ü"));
    EXPECT_EQ(composer.press('e'), QString::fromUtf8("é"));
}

TEST(ComposeTable, ALocaleWithoutOneHasThatOfEnUs)
{
    const toolkit::ComposeTable table("xx_YY.UTF-8");
    toolkit::KeyComposer composer(table);
    EXPECT_EQ(composer.press(DEAD_ACUTE), WAITS);
    EXPECT_EQ(composer.press('e'), QString::fromUtf8("é"));
}

TEST_F(WithoutTables, NothingIsComposedAndTheKeysAreHandledAsUsual)
{
    const toolkit::ComposeTable table("en_US.UTF-8");
    toolkit::KeyComposer composer(table);
    EXPECT_EQ(table.get(), nullptr);
    EXPECT_EQ(composer.press(DEAD_ACUTE), AS_USUAL);
    EXPECT_EQ(composer.press('e'), AS_USUAL);
}

/// In a process of its own, which has not read the tables yet.
TEST_F(WithoutTables, OneDiagnosticSaysSo)
{
    const auto composeTwice = [] {
        fakes::FakePlatform fake;
        toolkit::KeyComposer().press(DEAD_ACUTE);
        toolkit::KeyComposer().press(DEAD_ACUTE);
        const bool once = fake.log.diagnostics.size() == 1 && fake.log.lines.empty();
        std::_Exit(once ? 0 : 1);
    };
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        composeTwice(), testing::ExitedWithCode(0), testing::Not(testing::HasSubstr("xkb"))
    );
}
