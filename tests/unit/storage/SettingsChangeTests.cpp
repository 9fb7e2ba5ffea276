// Who hears of changed settings, and when.
#include "SettingsTest.h"

using testing::ElementsAre;

TEST_F(SettingsTest, HandlersAreCalledInTheOrderRegisteredOnceAChange)
{
    std::vector<int> order;
    for (const int number : {1, 2, 3}) {
        settings.addOnConfigurationChangeEvent([&order, number] { order.push_back(number); });
    }

    settings.setApplicationIsActive(true);
    EXPECT_THAT(order, ElementsAre(1, 2, 3));

    settings.setApplicationPassword("secret");
    EXPECT_THAT(order, ElementsAre(1, 2, 3, 1, 2, 3));
}

TEST_F(SettingsTest, EverySetterNotifiesAlsoWhenNothingChanged)
{
    const int changes = countChanges([this] {
        for (int round = 0; round < 2; ++round) {
            settings.setApplicationPassword("secret");
            settings.setApplicationIsActive(true);
            settings.setStartAtLogin(false);
            settings.setLockAdministrativeApplications(true);
            settings.addLockedApplicationBundleId("a.b");
        }
    });

    EXPECT_EQ(changes, 10);
}

TEST_F(SettingsTest, AHandlerIsCalledAsOftenAsItIsRegistered)
{
    int count = 0;
    const auto handler = [&count] { ++count; };
    settings.addOnConfigurationChangeEvent(handler);
    settings.addOnConfigurationChangeEvent(handler);

    settings.setStartAtLogin(true);

    EXPECT_EQ(count, 2);
}

TEST_F(SettingsTest, HandlersSeeTheNewValue)
{
    bool seen = true;
    settings.addOnConfigurationChangeEvent([&] { seen = settings.getApplicationIsActive(); });

    settings.setApplicationIsActive(false);

    EXPECT_FALSE(seen);
}

TEST_F(SettingsTest, AHandlerThatChangesASettingCausesANestedRound)
{
    std::vector<std::string> order;
    settings.addOnConfigurationChangeEvent([&] {
        order.emplace_back("first");
        if (settings.getApplicationIsActive()) {
            settings.setApplicationIsActive(false);
        }
    });
    settings.addOnConfigurationChangeEvent([&order] { order.emplace_back("second"); });

    settings.setApplicationPassword("secret");

    EXPECT_THAT(order, ElementsAre("first", "first", "second", "second"));
}

TEST_F(SettingsTest, AHandlerRegisteredDuringARoundHearsTheNextOne)
{
    int count = 0;
    const auto late = [&count] { ++count; };
    settings.addOnConfigurationChangeEvent([&] { settings.addOnConfigurationChangeEvent(late); });

    settings.setStartAtLogin(true);
    EXPECT_EQ(count, 0);
    settings.setStartAtLogin(true);
    EXPECT_EQ(count, 1);
}
