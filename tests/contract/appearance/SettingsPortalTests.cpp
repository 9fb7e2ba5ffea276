// The appearance that the user chose, as a settings portal on a private bus tells it.
#include "desktop/Desktop.h"
#include "desktop/PrivateBus.h"
#include "desktop/TemporaryFolder.h"
#include "linux/dbus/SettingsPortal.h"
#include "qt/QtEnvironment.h"
#include "qt/WaitFor.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>

#include <optional>

#include <gtest/gtest.h>

namespace {

const auto* const ENVIRONMENT =
    testing::AddGlobalTestEnvironment(new support::QtEnvironment<QCoreApplication>);

constexpr auto NAME = "org.freedesktop.portal.Desktop";
constexpr auto PATH = "/org/freedesktop/portal/desktop";
constexpr auto INTERFACE = "org.freedesktop.portal.Settings";
constexpr auto APPEARANCE = "org.freedesktop.appearance";
constexpr auto COLOR_SCHEME = "color-scheme";
constexpr unsigned NONE = 0;
constexpr unsigned DARK = 1;
constexpr unsigned LIGHT = 2;

/// Answers on the bus as portals do: the value in a variant within a variant.
class FakePortal final : public QDBusVirtualObject
{
public:
    FakePortal(const std::string& address, unsigned scheme)
        : scheme(scheme),
          bus(QDBusConnection::connectToBus(QString::fromStdString(address), "portal"))
    {
        bus.registerVirtualObject(PATH, this);
        bus.registerService(NAME);
    }

    FakePortal(const FakePortal&) = delete;
    FakePortal& operator=(const FakePortal&) = delete;
    FakePortal(FakePortal&&) = delete;
    FakePortal& operator=(FakePortal&&) = delete;

    ~FakePortal() override
    {
        bus = QDBusConnection(QString());
        QDBusConnection::disconnectFromBus("portal");
    }

    QString introspect(const QString& /*path*/) const override { return {}; }

    bool handleMessage(const QDBusMessage& call, const QDBusConnection& connection) override
    {
        const QList<QVariant> expected{QString(APPEARANCE), QString(COLOR_SCHEME)};
        if (call.member() != "Read" || call.arguments() != expected) {
            return false;
        }
        const QDBusVariant inner{QVariant(scheme)};
        const QDBusVariant outer{QVariant::fromValue(inner)};
        connection.send(call.createReply(QVariant::fromValue(outer)));
        ++questions;
        return true;
    }

    void change(unsigned value)
    {
        QDBusMessage signal = QDBusMessage::createSignal(PATH, INTERFACE, "SettingChanged");
        const QDBusVariant inner{QVariant(value)};
        signal << QString(APPEARANCE) << QString(COLOR_SCHEME) << QVariant::fromValue(inner);
        bus.send(signal);
    }

    int questions = 0;

private:
    unsigned scheme;
    QDBusConnection bus;
};

class Appearance : public testing::Test
{
protected:
    void start(unsigned scheme)
    {
        portal.emplace(bus.address(), scheme);
        settings.emplace(bus.address());
        ASSERT_TRUE(support::waitFor([&] { return portal->questions == 1; }));
    }

    bool isDark() { return settings->interfaceStyle() == "Dark"; }

    bool becomes(bool dark)
    {
        return support::waitFor([&] { return isDark() == dark; });
    }

    desktop::TemporaryFolder folder;
    desktop::PrivateBus bus{folder.path(), desktop::privateEnvironment(folder)};
    std::optional<FakePortal> portal;
    std::optional<dbus::SettingsPortal> settings;
};

} // namespace

TEST_F(Appearance, IsDarkWhereTheUserPrefersThat)
{
    start(DARK);
    EXPECT_TRUE(becomes(true));
}

TEST_F(Appearance, IsDarkForThatPreferenceOnly)
{
    start(DARK);
    for (const unsigned scheme : {NONE, LIGHT, 7U}) {
        ASSERT_TRUE(becomes(true)) << scheme;
        portal->change(scheme);
        EXPECT_TRUE(becomes(false)) << scheme;
        portal->change(DARK);
    }
}

TEST_F(Appearance, HeedsNoOtherSetting)
{
    start(LIGHT);
    const auto tell = [this](const char* settingNamespace, const char* key) {
        return QMetaObject::invokeMethod(
            &*settings,
            "settingChanged",
            Q_ARG(QString, QString(settingNamespace)),
            Q_ARG(QString, QString(key)),
            Q_ARG(QDBusVariant, QDBusVariant(QVariant(DARK)))
        );
    };
    ASSERT_TRUE(tell(APPEARANCE, "contrast"));
    EXPECT_FALSE(isDark());
    ASSERT_TRUE(tell("org.example.else", COLOR_SCHEME));
    EXPECT_FALSE(isDark());
    ASSERT_TRUE(tell(APPEARANCE, COLOR_SCHEME));
    EXPECT_TRUE(isDark());
}

TEST_F(Appearance, IsNotDarkUntilAPortalThatComesLateSaysSo)
{
    settings.emplace(bus.address());
    EXPECT_EQ(settings->interfaceStyle(), std::nullopt);
    portal.emplace(bus.address(), LIGHT);
    EXPECT_TRUE(support::waitFor([&] {
        portal->change(DARK); // until it listens
        return isDark();
    }));
}

TEST_F(Appearance, IsAskedForAgainOnABusThatComesBack)
{
    start(LIGHT);
    portal.reset();
    bus.process().end();
    const desktop::PrivateBus again(folder.path(), desktop::privateEnvironment(folder));
    portal.emplace(again.address(), DARK);
    EXPECT_TRUE(becomes(true));
}

TEST(AppearanceWithoutABus, IsNotDark)
{
    const dbus::SettingsPortal settings("unix:path=/nonexistent/bus");
    EXPECT_EQ(settings.interfaceStyle(), std::nullopt);
}
