// The password as it is stored, and what a new one must be.
#include "SettingsTest.h"

namespace {

std::string refusalOf(const std::string& password, const std::string& confirmation)
{
    const storage::PasswordValidation validation =
        storage::ConfigurationAndPreferencesService::validateNewPassword(password, confirmation);
    EXPECT_EQ(validation.accepted, validation.message.empty());
    return validation.message;
}

} // namespace

TEST_F(SettingsTest, ThePasswordIsStoredUncheckedAndAsTyped)
{
    settings.setApplicationPassword(" s ");

    EXPECT_EQ(fakes::secret(platform, "Password"), " s ");
    EXPECT_EQ(settings.getApplicationPassword(), " s ");
    EXPECT_TRUE(settings.hasPassword());

    settings.setApplicationPassword("");
    EXPECT_FALSE(settings.hasPassword());
}

TEST_F(SettingsTest, ANewPasswordMayNotBeEmptyWhateverTheConfirmation)
{
    EXPECT_EQ(refusalOf("", ""), "The password cannot be empty");
    EXPECT_EQ(refusalOf("", "other"), "The password cannot be empty");
}

TEST_F(SettingsTest, ANewPasswordOfOneCharacterIsTooShort)
{
    const std::string message = "The password cannot be smaller than 3 characters";
    EXPECT_EQ(refusalOf("a", "a"), message);
    EXPECT_EQ(refusalOf("a", "b"), message);
    EXPECT_EQ(refusalOf("e\u0301", "e\u0301"), message);
    EXPECT_EQ(refusalOf("\U0001F469\u200D\U0001F467", "\U0001F469\u200D\U0001F467"), message);
}

TEST_F(SettingsTest, ANewPasswordOfTwoCharactersIsAccepted)
{
    EXPECT_EQ(refusalOf("ab", "ab"), "");
    EXPECT_EQ(refusalOf("  ", "  "), "");
}

TEST_F(SettingsTest, ANewPasswordMustEqualItsConfirmation)
{
    EXPECT_EQ(refusalOf("abc", "abd"), "The passwords do not match");
    EXPECT_EQ(refusalOf("abc", "abc "), "The passwords do not match");
    EXPECT_EQ(refusalOf("abc", ""), "The passwords do not match");
    EXPECT_EQ(refusalOf("caf\u00E9", "cafe\u0301"), "");
}
