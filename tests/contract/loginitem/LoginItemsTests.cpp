// One set of promises for login items, kept by the fake and by the adapter.
#include "desktop/TemporaryFolder.h"
#include "fakes/FakeLoginItems.h"
#include "linux/xdg/DesktopEntryParser.h"
#include "linux/xdg/ExecLine.h"
#include "linux/xdg/XdgLoginItems.h"

#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>

#include <gtest/gtest.h>

namespace {

constexpr auto HELPER = "com.quorvent.OlvoHelper";
constexpr auto FILE_NAME = "config/autostart/com.quorvent.OlvoHelper.desktop";

class FakeSystem
{
public:
    platform::LoginItems& items() { return loginItems; }

    bool enabled() { return loginItems.enabled.contains(HELPER); }

    void fail() { loginItems.failing = true; }

private:
    fakes::Calls calls;
    fakes::FakeLoginItems loginItems{calls};
};

class RealSystem
{
public:
    platform::LoginItems& items() { return *loginItems; }

    bool enabled() { return std::filesystem::exists(folder.path(FILE_NAME)); }

    /// A file stands where the folder should be.
    void fail()
    {
        std::filesystem::remove_all(folder.path("config"));
        folder.write("config", "");
        // Neither can anything be taken away from below it.
        loginItems = make();
    }

    std::string content()
    {
        std::ostringstream text;
        text << std::ifstream(folder.path(FILE_NAME)).rdbuf();
        return text.str();
    }

    std::unique_ptr<xdg::XdgLoginItems> make()
    {
        return std::make_unique<xdg::XdgLoginItems>(
            folder.path("config"),
            std::map<std::string, std::string>{{HELPER, program}},
            [this](std::string_view line) { lines.emplace_back(line); }
        );
    }

    desktop::TemporaryFolder folder;
    std::vector<std::string> lines;
    std::string program = "/opt/my \"own\" $HOME/100%/OlvoHelper.app/OlvoHelper";

private:
    std::unique_ptr<xdg::XdgLoginItems> loginItems = make();
};

template <typename Kind> class LoginItemsContract : public testing::Test
{
protected:
    Kind system;
};

using Kinds = testing::Types<FakeSystem, RealSystem>;
TYPED_TEST_SUITE(LoginItemsContract, Kinds);

} // namespace

TYPED_TEST(LoginItemsContract, RegisteredItemIsThere)
{
    EXPECT_TRUE(this->system.items().setEnabled(HELPER, true));
    EXPECT_TRUE(this->system.enabled());
}

TYPED_TEST(LoginItemsContract, RegisteringTwiceIsRegistering)
{
    EXPECT_TRUE(this->system.items().setEnabled(HELPER, true));
    EXPECT_TRUE(this->system.items().setEnabled(HELPER, true));
    EXPECT_TRUE(this->system.enabled());
}

TYPED_TEST(LoginItemsContract, UnregisteredItemIsGone)
{
    EXPECT_TRUE(this->system.items().setEnabled(HELPER, true));
    EXPECT_TRUE(this->system.items().setEnabled(HELPER, false));
    EXPECT_FALSE(this->system.enabled());
}

TYPED_TEST(LoginItemsContract, UnregisteringWhatWasNeverRegisteredSucceeds)
{
    EXPECT_TRUE(this->system.items().setEnabled(HELPER, false));
    EXPECT_FALSE(this->system.enabled());
}

TYPED_TEST(LoginItemsContract, FailureIsTold)
{
    this->system.fail();

    EXPECT_FALSE(this->system.items().setEnabled(HELPER, true));
}

TEST(XdgLoginItems, FileStartsTheHelperWhateverItsPathIsMadeOf)
{
    RealSystem system;
    ASSERT_TRUE(system.items().setEnabled(HELPER, true));

    const auto entry = xdg::DesktopEntryParser({}).parse(system.content());

    ASSERT_TRUE(entry.has_value());
    EXPECT_EQ(xdg::commandOf(entry->exec).program, system.program);
    EXPECT_TRUE(entry->noDisplay);
    EXPECT_FALSE(entry->hidden);
}

TEST(XdgLoginItems, DamagedFileIsReplaced)
{
    RealSystem system;
    system.folder.write(FILE_NAME, "Hidden=true\n");

    EXPECT_TRUE(system.items().setEnabled(HELPER, true));

    EXPECT_TRUE(xdg::DesktopEntryParser({}).parse(system.content()).has_value());
}

TEST(XdgLoginItems, NothingButTheFileIsLeftBehind)
{
    RealSystem system;
    system.items().setEnabled(HELPER, true);

    const std::filesystem::directory_iterator files(system.folder.path("config/autostart"));
    EXPECT_EQ(std::distance(begin(files), end(files)), 1);
}

TEST(XdgLoginItems, FailureIsSaidInOneLine)
{
    RealSystem system;
    system.fail();

    system.items().setEnabled(HELPER, true);

    ASSERT_EQ(system.lines.size(), 1U);
    EXPECT_NE(system.lines.front().find("cannot be written"), std::string::npos);
}

TEST(XdgLoginItems, FolderInPlaceOfTheFileIsAFailure)
{
    RealSystem system;
    system.folder.write(std::string(FILE_NAME) + "/inside", "");

    EXPECT_FALSE(system.items().setEnabled(HELPER, true));
    EXPECT_FALSE(system.items().setEnabled(HELPER, false));
}

TEST(XdgLoginItems, UnknownItemCannotBeRegistered)
{
    RealSystem system;

    EXPECT_FALSE(system.items().setEnabled("com.example.Other", true));
    EXPECT_TRUE(system.items().setEnabled("com.example.Other", false));
}
