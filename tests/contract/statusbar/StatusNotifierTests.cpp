// The item as hosts see it on the bus, and whom it follows there.
#include "TestPicture.h"
#include "Worlds.h"
#include "linux/statusnotifier/IconPixmap.h"
#include "linux/statusnotifier/MenuLayout.h"

#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QPalette>

#include <chrono>
#include <csignal>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;
using statusnotifier::IconPixmap;
using statusnotifier::IconPixmaps;
using testing::ElementsAre;

class StatusNotifierItemOnTheBus : public testing::Test
{
protected:
    void makeItem()
    {
        item = world.bar().statusItem(platform::STATUS_ITEM_VARIABLE_LENGTH);
        item->onDraw = [this] { return look; };
        item->onMouseDown = [this] { ++clicks; };
    }

    void showItem()
    {
        world.areaComes();
        makeItem();
    }

    IconPixmaps pixmaps()
    {
        return qdbus_cast<IconPixmaps>(world.client().properties()["IconPixmap"]);
    }

    statusnotifier::MenuLayout layout(int parent, int depth)
    {
        const QDBusMessage reply =
            world.client().call(ItemClient::MENU, "GetLayout", {parent, depth, QStringList()});
        return qdbus_cast<statusnotifier::MenuLayout>(reply.arguments().value(1));
    }

    NotifierWorld world;
    TestPicture picture;
    platform::StatusItemLook look{picture.path(), false, "Tarvel"};
    std::unique_ptr<platform::StatusItem> item;
    int clicks = 0;
};

/// Alpha, red, green, blue.
std::vector<int> pixelOf(const IconPixmap& pixmap, int x, int y)
{
    std::vector<int> parts;
    for (int part = 0; part < 4; ++part) {
        const auto byte = pixmap.bytes[(y * pixmap.width + x) * 4 + part];
        parts.push_back(static_cast<unsigned char>(byte));
    }
    return parts;
}

TEST_F(StatusNotifierItemOnTheBus, SaysWhatItIs)
{
    showItem();
    const QVariantMap properties = world.client().properties();
    EXPECT_EQ(properties["Category"].toString(), "ApplicationStatus");
    EXPECT_EQ(properties["Id"].toString(), "com.quorvent.Tarvel");
    EXPECT_EQ(properties["Title"].toString(), "Tarvel");
    EXPECT_EQ(properties["Status"].toString(), "Active");
    EXPECT_EQ(properties["IconName"].toString(), "");
    EXPECT_FALSE(properties["ItemIsMenu"].toBool());
    EXPECT_EQ(properties["Menu"].value<QDBusObjectPath>().path(), "/MenuBar");
    EXPECT_EQ(qdbus_cast<statusnotifier::ToolTip>(properties["ToolTip"]).title, "Tarvel");
}

TEST_F(StatusNotifierItemOnTheBus, IsNamedAsHostsExpect)
{
    showItem();
    EXPECT_THAT(
        world.client().service.toStdString(),
        testing::StartsWith("org.kde.StatusNotifierItem-" + std::to_string(getpid()) + "-")
    );
}

TEST_F(StatusNotifierItemOnTheBus, HasItsPictureInEverySizeWithAlphaFirst)
{
    showItem();
    const IconPixmaps pictures = pixmaps();
    std::vector<int> sides;
    for (const IconPixmap& pixmap : pictures) {
        ASSERT_EQ(pixmap.width, pixmap.height);
        ASSERT_EQ(pixmap.bytes.size(), pixmap.width * pixmap.height * 4);
        sides.push_back(pixmap.width);
        const std::vector<int> left = pixelOf(pixmap, pixmap.width / 4, pixmap.height / 2);
        EXPECT_NEAR(left[0], 128, 2);
        EXPECT_NEAR(left[1], 255, 2); // not premultiplied
        EXPECT_EQ(left[2], 0);
        EXPECT_EQ(left[3], 0);
        EXPECT_EQ(pixelOf(pixmap, pixmap.width - 3, pixmap.height / 2)[0], 0);
    }
    EXPECT_THAT(sides, ElementsAre(16, 22, 24, 32, 48));
}

TEST_F(StatusNotifierItemOnTheBus, HasAGroundWhileHighlighted)
{
    showItem();
    look.highlighted = true;
    look.title = "Tarvel is open";
    item->setNeedsDisplay();
    ASSERT_TRUE(support::waitFor([&] {
        return world.client().properties()["Title"].toString() == "Tarvel is open";
    }));
    const QColor ground = QGuiApplication::palette().color(QPalette::Active, QPalette::Highlight);
    const IconPixmap pixmap = pixmaps().back();
    EXPECT_THAT(
        pixelOf(pixmap, pixmap.width - 3, pixmap.height / 2),
        ElementsAre(255, ground.red(), ground.green(), ground.blue())
    );
}

TEST_F(StatusNotifierItemOnTheBus, WithoutAReadablePictureIsTransparent)
{
    look.image = "/nonexistent.svg";
    showItem();
    EXPECT_THAT(pixelOf(pixmaps().front(), 8, 8), ElementsAre(0, 0, 0, 0));
}

TEST_F(StatusNotifierItemOnTheBus, IsActivatedInBothWays)
{
    showItem();
    world.client().call(ItemClient::ITEM, "Activate", {1, 2});
    world.client().call(ItemClient::ITEM, "SecondaryActivate", {1, 2});
    world.client().call(ItemClient::ITEM, "ContextMenu", {1, 2});
    EXPECT_TRUE(support::waitFor([&] { return clicks >= 2; }));
    EXPECT_EQ(clicks, 2);
    EXPECT_EQ(item->frame(), std::nullopt); // where it was clicked is not where it is
}

TEST_F(StatusNotifierItemOnTheBus, AnswersWhatItDoesNotHaveWithAnError)
{
    showItem();
    ItemClient& client = world.client();
    EXPECT_EQ(client.call(ItemClient::ITEM, "Explode").type(), QDBusMessage::ErrorMessage);
    const QDBusMessage reply = client.call(
        "org.freedesktop.DBus.Properties", "Get", {QString::fromLatin1(ItemClient::ITEM), "Secret"}
    );
    EXPECT_EQ(reply.type(), QDBusMessage::ErrorMessage);
    const QDBusMessage description =
        client.call("org.freedesktop.DBus.Introspectable", "Introspect");
    EXPECT_TRUE(description.arguments().value(0).toString().contains("NewIcon"));
}

TEST_F(StatusNotifierItemOnTheBus, GivesItsMenu)
{
    showItem();
    item->setMenu({{"Open Tarvel", [] {}}, {"snake_case", [] {}}});
    const auto all = layout(0, -1);
    EXPECT_EQ(all.properties["children-display"].toString(), "submenu");
    ASSERT_EQ(all.children.size(), 2);
    EXPECT_EQ(all.children[0].properties["label"].toString(), "Open Tarvel");
    EXPECT_EQ(all.children[1].properties["label"].toString(), "snake__case");
    EXPECT_EQ(layout(0, 0).children.size(), 0);
    EXPECT_EQ(layout(1, -1).properties["label"].toString(), "Open Tarvel");

    const QDBusMessage reply = world.client().call(
        ItemClient::MENU,
        "GetGroupProperties",
        {QVariant::fromValue(QList<int>{1, 7}), QStringList()}
    );
    const auto entries = qdbus_cast<statusnotifier::MenuEntries>(reply.arguments().value(0));
    ASSERT_EQ(entries.size(), 1);
    EXPECT_EQ(entries[0].properties["label"].toString(), "Open Tarvel");
}

TEST_F(StatusNotifierItemOnTheBus, MenuTakesEventsTogetherAndNamesUnknownEntries)
{
    showItem();
    int opened = 0;
    item->setMenu({{"Open Tarvel", [&] { ++opened; }}});
    const QDBusVariant none{QString()};
    const statusnotifier::MenuEvents events{
        {1, "hovered", none, 0}, {1, "clicked", none, 0}, {9, "clicked", none, 0}};
    const QDBusMessage reply =
        world.client().call(ItemClient::MENU, "EventGroup", {QVariant::fromValue(events)});
    EXPECT_EQ(qdbus_cast<QList<int>>(reply.arguments().value(0)), QList<int>{9});
    EXPECT_TRUE(support::waitFor([&] { return opened > 0; }));
    EXPECT_EQ(opened, 1);
}

TEST_F(StatusNotifierItemOnTheBus, IsNotShownByAWatcherWithoutAHostUntilOneComes)
{
    world.watcher.emplace(world.bus.address(), false);
    makeItem();
    EXPECT_FALSE(item->isShown());
    world.watcher->setHost(true);
    EXPECT_TRUE(support::waitFor([&] { return item->isShown(); }));
    const std::string name = world.client().service.toStdString();
    world.watcher->setHost(false);
    EXPECT_TRUE(support::waitFor([&] { return !item->isShown(); }));
    EXPECT_TRUE(support::waitFor([&] { return !world.bus.hasOwner(name); }));
}

TEST_F(StatusNotifierItemOnTheBus, RegistersAgainWithAWatcherThatReplacesAnother)
{
    showItem();
    world.client();
    desktop::FakeStatusNotifierWatcher other(world.bus.address()); // there was always one
    EXPECT_TRUE(support::waitFor([&] { return other.registered().size() == 1; }));
    EXPECT_TRUE(item->isShown());
}

TEST_F(StatusNotifierItemOnTheBus, IsShownAtOnceWhereThereWasAHostBefore)
{
    world.watcher.emplace(world.bus.address());
    statusbar::DesktopStatusBar bar(
        only<statusnotifier::StatusNotifierArea>(world.bus.address()), world.queues
    );
    EXPECT_TRUE(bar.statusItem(platform::STATUS_ITEM_VARIABLE_LENGTH)->isShown());
}

TEST_F(StatusNotifierItemOnTheBus, IsSettledQuicklyWhenTheWatcherHangsAndAppearsWhenItAnswers)
{
    world.watcher.emplace(world.bus.address());
    world.watcher->setHanging(true);
    statusbar::DesktopStatusBar bar(
        only<statusnotifier::StatusNotifierArea>(world.bus.address()), world.queues
    );
    const auto before = std::chrono::steady_clock::now();
    item = bar.statusItem(platform::STATUS_ITEM_VARIABLE_LENGTH);
    EXPECT_FALSE(item->isShown());
    EXPECT_FALSE(item->isShown());
    EXPECT_LT(std::chrono::steady_clock::now() - before, 2s); // 50 ms, on a busy machine too
    world.watcher->setHanging(false);
    EXPECT_TRUE(support::waitFor([&] { return item->isShown(); }));
    item.reset();
}

TEST_F(StatusNotifierItemOnTheBus, IsNotShownByAWatcherThatRefusesItAndSaysSoOnce)
{
    std::vector<std::string> reports;
    statusbar::DesktopStatusBar bar(
        only<statusnotifier::StatusNotifierArea>(
            world.bus.address(), [&reports](std::string_view line) { reports.emplace_back(line); }
        ),
        world.queues
    );
    world.watcher.emplace(world.bus.address());
    world.watcher->setRefusing(true);
    item = bar.statusItem(platform::STATUS_ITEM_VARIABLE_LENGTH);
    ASSERT_TRUE(support::waitFor([&] { return !reports.empty(); }));
    EXPECT_FALSE(item->isShown());
    EXPECT_THAT(reports, ElementsAre(testing::EndsWith("there are too many")));

    desktop::FakeStatusNotifierWatcher other(world.bus.address());
    EXPECT_TRUE(support::waitFor([&] { return other.registered().size() == 1; }));
    EXPECT_TRUE(item->isShown());
    EXPECT_EQ(reports.size(), 1U);
    item.reset();
}

TEST_F(StatusNotifierItemOnTheBus, IsNotShownAnyMoreWhenTheBusGoes)
{
    showItem();
    world.client();
    world.watcher.reset();
    world.areaComes();
    EXPECT_TRUE(support::waitFor([&] { return item->isShown(); }));
    world.bus.process().signal(SIGKILL);
    EXPECT_TRUE(support::waitFor([&] { return !item->isShown(); }));
    item->setNeedsDisplay();
    item->setMenu({});
}

TEST_F(StatusNotifierItemOnTheBus, ComesBackWithABusThatComesBack)
{
    showItem();
    ASSERT_TRUE(support::waitFor([&] { return item->isShown(); }));
    world.bus.process().end();
    ASSERT_TRUE(support::waitFor([&] { return !item->isShown(); }));
    world.areaGoes();

    const desktop::PrivateBus again(world.folder.path(), desktop::privateEnvironment(world.folder));
    world.areaComes();
    EXPECT_TRUE(support::waitFor([&] { return item->isShown(); }));
    world.click();
    EXPECT_TRUE(support::waitFor([&] { return clicks == 1; }));
}

TEST(StatusNotifierArea, IsFoundOnABusThatComesAfterIt)
{
    const desktop::TemporaryFolder folder;
    statusnotifier::StatusNotifierArea area("unix:path=" + (folder.path() / "bus").string());
    EXPECT_FALSE(area.isPresent());

    const desktop::PrivateBus bus(folder.path(), desktop::privateEnvironment(folder));
    const desktop::FakeStatusNotifierWatcher watcher(bus.address());
    EXPECT_TRUE(support::waitFor([&] { return area.isPresent(); }));
}

TEST(StatusNotifierArea, IsNotThereWithoutABus)
{
    statusnotifier::StatusNotifierArea area("unix:path=/nonexistent/bus");
    EXPECT_FALSE(area.isPresent());
}

} // namespace
