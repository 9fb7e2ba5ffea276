#include "storage/KeyConstants.h"

#include <gtest/gtest.h>

using storage::KeyConstants;

TEST(KeyConstants, HaveTheirFixedTexts)
{
    EXPECT_STREQ(KeyConstants::APPLICATION_PASSWORD_KEY, "Password");
    EXPECT_STREQ(KeyConstants::APPLICATIONS_KEY, "Applications");
    EXPECT_STREQ(KeyConstants::APPLICATION_IS_ACTIVE_KEY, "Active");
    EXPECT_STREQ(KeyConstants::START_AT_LOGIN_KEY, "LoginStart");
    EXPECT_STREQ(KeyConstants::LOCK_ADMINISTRATIVE_APPS_KEY, "Administrative");
    EXPECT_STREQ(KeyConstants::CURRENT_BLOCKED_APP_KEY, "cbaal");
    EXPECT_STREQ(KeyConstants::TERMINATE_HELPER_KEY, "TERMINATE_HELPER_TARVEL");
}
