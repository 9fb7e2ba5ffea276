#include "Secrets.h"
#include "desktop/TemporaryFolder.h"
#include "linux/secretservice/EmbeddedStore.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace secretservice {
namespace {

namespace fs = std::filesystem;
using desktop::readFile;
using desktop::writeFile;
using State = ItemRead::State;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

constexpr auto OWN_FILE = fs::perms::owner_read | fs::perms::owner_write;

class EmbeddedStoreTest : public testing::Test
{
protected:
    EmbeddedStore store()
    {
        return {path, [this](std::string_view line) { lines.emplace_back(line); }};
    }

    void put(const std::string& account, const std::string& value)
    {
        EmbeddedStore writer = store();
        ASSERT_EQ(writer.put(account, secret(value), Prompting::Forbidden), std::nullopt);
    }

    std::vector<fs::path> files(const std::string& extension)
    {
        std::vector<fs::path> found;
        for (const auto& entry : fs::directory_iterator(path)) {
            if (entry.path().extension() == extension) {
                found.push_back(entry.path());
            }
        }
        return found;
    }

    void expectFailureThatChangesNothing(const std::string& account, const fs::path& file)
    {
        const std::string content = readFile(file);
        EmbeddedStore reader = store();
        const ItemRead read = reader.read(account);
        Items items;

        EXPECT_EQ(read.state, State::Failed);
        EXPECT_THAT(read.reason, HasSubstr(file.filename().string()));
        EXPECT_NE(reader.readAll(items), std::nullopt);
        EXPECT_EQ(readFile(file), content);
    }

    desktop::TemporaryFolder home;
    fs::path path = home.path() / "data" / "keychain";
    std::vector<std::string> lines;
};

TEST_F(EmbeddedStoreTest, FolderThatWasNeverWrittenHoldsNothingAndIsNotMadeByReading)
{
    EmbeddedStore reader = store();

    EXPECT_FALSE(EmbeddedStore::holdsItems(path));
    EXPECT_EQ(reader.read("a").state, State::Missing);
    Items items{{"stale", secret("x")}};
    EXPECT_EQ(reader.readAll(items), std::nullopt);
    EXPECT_TRUE(items.empty());
    EXPECT_FALSE(fs::exists(path));
}

TEST_F(EmbeddedStoreTest, ItemOutlivesTheStore)
{
    put("a", "value");
    EmbeddedStore reader = store();
    const ItemRead read = reader.read("a");

    EXPECT_EQ(read.state, State::Found);
    EXPECT_EQ(text(read.data), "value");
    EXPECT_TRUE(EmbeddedStore::holdsItems(path));
}

TEST_F(EmbeddedStoreTest, EmptyItemIsFoundAndEmpty)
{
    put("a", "");
    EmbeddedStore reader = store();
    const ItemRead read = reader.read("a");

    EXPECT_EQ(read.state, State::Found);
    EXPECT_TRUE(read.data.empty());
}

TEST_F(EmbeddedStoreTest, OnlyTheUserMayEnterAndRead)
{
    fs::create_directories(path);
    fs::permissions(path, fs::perms::all);
    put("a", "value");

    EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_all);
    EXPECT_EQ(fs::status(path / "key").permissions(), OWN_FILE);
    const auto items = files(".item");
    ASSERT_THAT(items, SizeIs(1));
    EXPECT_EQ(fs::status(items[0]).permissions(), OWN_FILE);
}

TEST_F(EmbeddedStoreTest, SecondPutReplacesTheFirstAndLeavesNoDraft)
{
    put("a", "x");
    put("a", "y");
    EmbeddedStore reader = store();

    EXPECT_EQ(text(reader.read("a").data), "y");
    EXPECT_THAT(files(".item"), SizeIs(1));
    EXPECT_THAT(files(".new"), SizeIs(0));
}

TEST_F(EmbeddedStoreTest, EraseTakesTheFileAwayAndIsDoneTwice)
{
    put("a", "x");
    put("b", "y");
    EmbeddedStore writer = store();

    EXPECT_EQ(writer.erase("a", Prompting::Forbidden), std::nullopt);
    EXPECT_EQ(writer.erase("a", Prompting::Forbidden), std::nullopt);
    EXPECT_EQ(writer.read("a").state, State::Missing);
    EXPECT_EQ(text(writer.read("b").data), "y");
}

TEST_F(EmbeddedStoreTest, EraseAllLeavesNoItem)
{
    put("a", "x");
    put("b", "y");
    EmbeddedStore writer = store();

    EXPECT_EQ(writer.eraseAll(Prompting::Forbidden), std::nullopt);
    EXPECT_FALSE(EmbeddedStore::holdsItems(path));
}

TEST_F(EmbeddedStoreTest, ReadAllGivesEveryItem)
{
    put("a", "x");
    put("b", "");
    Items items;
    EmbeddedStore reader = store();

    EXPECT_EQ(reader.readAll(items), std::nullopt);
    EXPECT_EQ(items, (Items{{"a", secret("x")}, {"b", secret("")}}));
}

TEST_F(EmbeddedStoreTest, TruncatedItemIsAFailureAndStaysAsItIs)
{
    put("a", "x");
    const fs::path file = files(".item").at(0);
    fs::resize_file(file, fs::file_size(file) / 2);

    expectFailureThatChangesNothing("a", file);
}

TEST_F(EmbeddedStoreTest, EmptyFileInPlaceOfAnItemIsAFailureAndStaysAsItIs)
{
    put("a", "x");
    const fs::path file = files(".item").at(0);
    fs::resize_file(file, 0);

    expectFailureThatChangesNothing("a", file);
}

TEST_F(EmbeddedStoreTest, CorruptItemIsKeptBesideWhenItIsWrittenAnew)
{
    put("a", "x");
    const fs::path file = files(".item").at(0);
    writeFile(file, "rubbish");
    put("a", "y");
    EmbeddedStore reader = store();

    EXPECT_EQ(text(reader.read("a").data), "y");
    const auto beside = files(".damaged");
    ASSERT_THAT(beside, SizeIs(1));
    EXPECT_EQ(readFile(beside[0]), "rubbish");
    EXPECT_THAT(lines, ElementsAre(HasSubstr("damaged item")));
}

TEST_F(EmbeddedStoreTest, EveryCorruptItemIsKeptUnderANameOfItsOwn)
{
    put("a", "x");
    const fs::path file = files(".item").at(0);
    writeFile(file, "first");
    put("a", "y");
    writeFile(file, "second");
    EmbeddedStore writer = store();

    EXPECT_EQ(writer.erase("a", Prompting::Forbidden), std::nullopt);
    EXPECT_EQ(writer.read("a").state, State::Missing);
    EXPECT_THAT(files(".damaged"), SizeIs(2));
    EXPECT_FALSE(EmbeddedStore::holdsItems(path));
}

TEST_F(EmbeddedStoreTest, ExchangedItemsAreDamaged)
{
    put("a", "x");
    put("b", "y");
    const auto items = files(".item");
    fs::rename(items.at(0), path / "between");
    fs::rename(items.at(1), items.at(0));
    fs::rename(path / "between", items.at(1));
    EmbeddedStore reader = store();
    Items all;

    EXPECT_EQ(reader.read("a").state, State::Failed);
    EXPECT_EQ(reader.read("b").state, State::Failed);
    EXPECT_NE(reader.readAll(all), std::nullopt);
}

TEST_F(EmbeddedStoreTest, LostKeyIsAFailureAndIsNotMadeAnew)
{
    put("a", "x");
    fs::remove(path / "key");
    EmbeddedStore fresh = store();
    Items items;

    EXPECT_EQ(fresh.read("a").state, State::Failed);
    EXPECT_NE(fresh.readAll(items), std::nullopt);
    EXPECT_NE(fresh.put("a", secret("y"), Prompting::Forbidden), std::nullopt);
    EXPECT_FALSE(fs::exists(path / "key"));
}

TEST_F(EmbeddedStoreTest, DamagedKeyIsAFailure)
{
    put("a", "x");
    fs::resize_file(path / "key", 5);
    EmbeddedStore fresh = store();

    EXPECT_EQ(fresh.read("a").state, State::Failed);
    EXPECT_NE(fresh.put("a", secret("y"), Prompting::Forbidden), std::nullopt);
    EXPECT_EQ(fs::file_size(path / "key"), 5U);
}

TEST_F(EmbeddedStoreTest, FolderThatVanishesIsAFailureOnceItWasUsed)
{
    EmbeddedStore reader = store();
    ASSERT_EQ(reader.put("a", secret("x"), Prompting::Forbidden), std::nullopt);
    fs::rename(path, home.path() / "elsewhere");

    EXPECT_EQ(reader.read("a").state, State::Failed);
    fs::rename(home.path() / "elsewhere", path);
    EXPECT_EQ(text(reader.read("a").data), "x");
}

TEST_F(EmbeddedStoreTest, FolderThatCannotBeMadeIsAFailureThatGoesByItself)
{
    writeFile(home.path() / "data", "a file where the folder should be");
    EmbeddedStore writer = store();
    EXPECT_NE(writer.put("a", secret("x"), Prompting::Forbidden), std::nullopt);

    fs::remove(home.path() / "data");
    EXPECT_EQ(writer.put("a", secret("x"), Prompting::Forbidden), std::nullopt);
    EXPECT_EQ(text(writer.read("a").data), "x");
}

TEST_F(EmbeddedStoreTest, UnwritableFolderKeepsTheOldValue)
{
    if (geteuid() == 0) {
        GTEST_SKIP() << "permissions do not bind root";
    }
    put("a", "x");
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_exec);
    EmbeddedStore writer = store();
    // The folder's mode is open to nobody else, so nothing widens it on the way.
    EXPECT_NE(writer.put("a", secret("y"), Prompting::Forbidden), std::nullopt);
    EXPECT_EQ(text(writer.read("a").data), "x");
}

TEST_F(EmbeddedStoreTest, LinkInPlaceOfAnItemIsNotFollowed)
{
    put("a", "x");
    const fs::path file = files(".item").at(0);
    fs::rename(file, home.path() / "moved");
    fs::create_symlink(home.path() / "moved", file);
    EmbeddedStore reader = store();

    EXPECT_EQ(reader.read("a").state, State::Failed);
}

TEST_F(EmbeddedStoreTest, PipeInPlaceOfAFileIsAFailureAndHoldsNothingUp)
{
    put("a", "one");
    for (const char* extension : {".item", ""}) {
        const fs::path file = files(extension).front();
        fs::rename(file, path / "kept");
        ASSERT_EQ(mkfifo(file.c_str(), S_IRUSR | S_IWUSR), 0);
        EmbeddedStore reader = store();
        const ItemRead read = reader.read("a");
        EXPECT_EQ(read.state, State::Failed);
        EXPECT_THAT(read.reason, HasSubstr("no plain file"));
        fs::rename(path / "kept", file);
    }
}

TEST_F(EmbeddedStoreTest, CancelledStoreAnswersNothingMore)
{
    put("a", "x");
    EmbeddedStore reader = store();
    reader.cancel();

    EXPECT_EQ(reader.read("a").state, State::Failed);
    EXPECT_NE(reader.erase("a", Prompting::Forbidden), std::nullopt);
}

} // namespace
} // namespace secretservice
