#include "DefaultsFolder.h"
#include "desktop/HeldFile.h"
#include "desktop/Wait.h"

#include <QFileInfo>
#include <QJsonDocument>

#include <chrono>
#include <csignal>
#include <optional>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace {

using platform::DefaultsValue;

/// While it lives no file of this process may grow beyond `bytes`, as if the disk were full.
class FullDisk
{
public:
    explicit FullDisk(rlim_t bytes) : handlerBefore(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit limit{bytes, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }

    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    FullDisk(FullDisk&&) = delete;
    FullDisk& operator=(FullDisk&&) = delete;

    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &before);
        static_cast<void>(std::signal(SIGXFSZ, handlerBefore));
    }

private:
    rlimit before{};
    void (*handlerBefore)(int);
};

bool synchronizeOnFullDisk(platform::UserDefaults& defaults, rlim_t room)
{
    const FullDisk disk(room);
    return defaults.synchronize();
}

/// The file is there with these bytes, and nothing else is.
bool isOnly(const DefaultsFolder& place, const QByteArray& bytes)
{
    return place.bytes() == bytes && place.entries() == QStringList("defaults.json");
}

/// The first number of bytes below `size` with room for which a failed save is not reported or
/// changes the file.
std::optional<rlim_t>
firstRoomThatHarms(platform::UserDefaults& defaults, const DefaultsFolder& place, rlim_t size)
{
    const QByteArray before = place.bytes();
    for (rlim_t room = 0; room < size; ++room) {
        if (synchronizeOnFullDisk(defaults, room) || !isOnly(place, before)) {
            return room;
        }
    }
    return std::nullopt;
}

unsigned modeOf(const QString& path)
{
    struct stat status = {};
    EXPECT_EQ(stat(QFile::encodeName(path).constData(), &status), 0);
    return status.st_mode & 0777U;
}

} // namespace

TEST(JsonFileUserDefaults, ANewProcessReadsWhatWasMadeDurable)
{
    DefaultsFolder place;
    {
        qt::JsonFileUserDefaults first = place.open();
        first.setValue("cbaal", "org.gnome.Calculator");
        EXPECT_TRUE(first.synchronize());
    }
    EXPECT_EQ(place.open().value("cbaal"), DefaultsValue("org.gnome.Calculator"));
    EXPECT_TRUE(place.log.diagnostics.empty());
}

TEST(JsonFileUserDefaults, NothingReachesTheFileBeforeItIsSynchronized)
{
    DefaultsFolder place;
    qt::JsonFileUserDefaults defaults = place.open();
    defaults.setValue("cbaal", "x");

    EXPECT_FALSE(QFile::exists(place.file()));
}

TEST(JsonFileUserDefaults, FileAndFolderAreForTheUserAlone)
{
    DefaultsFolder place;
    place.put("{}");
    chmod(QFile::encodeName(place.folder()).constData(), 0755);
    chmod(QFile::encodeName(place.file()).constData(), 0644);
    qt::JsonFileUserDefaults defaults = place.open();
    defaults.setValue("cbaal", "x");
    ASSERT_TRUE(defaults.synchronize());

    EXPECT_EQ(modeOf(place.folder()), 0700U);
    EXPECT_EQ(modeOf(place.file()), 0600U);
    EXPECT_EQ(place.entries(), QStringList("defaults.json"));
}

TEST(JsonFileUserDefaults, ReadsEveryTypeAndKeepsWhatItDoesNotReadOnRewrite)
{
    DefaultsFolder place;
    place.put(R"({"b": true, "d": 0.5, "i": 9007199254740993, "l": [1, null, {"k": "v"}],)"
              R"( "n": null, "o": {"k": [2.5]}, "s": "text"})");
    qt::JsonFileUserDefaults defaults = place.open();
    EXPECT_EQ(defaults.value("b"), DefaultsValue(true));
    EXPECT_EQ(defaults.value("d"), DefaultsValue(0.5));
    EXPECT_EQ(defaults.value("i"), DefaultsValue(std::int64_t{9007199254740993}));
    EXPECT_EQ(defaults.value("l"), DefaultsValue(platform::OpaqueValue{}));
    EXPECT_EQ(defaults.value("n"), DefaultsValue(platform::OpaqueValue{}));
    EXPECT_EQ(defaults.value("o"), DefaultsValue(platform::OpaqueValue{}));
    EXPECT_EQ(defaults.value("s"), DefaultsValue("text"));

    QJsonObject expected = QJsonDocument::fromJson(place.bytes()).object();
    expected.insert("cbaal", "x");
    defaults.setValue("cbaal", "x");
    ASSERT_TRUE(defaults.synchronize());
    EXPECT_EQ(QJsonDocument::fromJson(place.bytes()).object(), expected);
    EXPECT_TRUE(place.bytes().contains("9007199254740993"));
}

TEST(JsonFileUserDefaults, KeysThatAnotherProcessWroteSurvive)
{
    DefaultsFolder place;
    qt::JsonFileUserDefaults mine = place.open();
    qt::JsonFileUserDefaults other = place.open();
    other.setValue("theirs", "1");
    ASSERT_TRUE(other.synchronize());
    mine.setValue("cbaal", "2");
    ASSERT_TRUE(mine.synchronize());

    EXPECT_EQ(place.open().value("theirs"), DefaultsValue("1"));
    EXPECT_EQ(mine.value("theirs"), DefaultsValue("1"));
}

TEST(JsonFileUserDefaults, AFileInPlaceOfTheFolderMakesSynchronizeFailAndTheValuesStillCount)
{
    DefaultsFolder place;
    QFile inTheWay(place.folder());
    inTheWay.open(QIODevice::WriteOnly);
    inTheWay.write("keep me");
    inTheWay.close();
    qt::JsonFileUserDefaults defaults = place.open();
    defaults.setValue("cbaal", "x");

    EXPECT_FALSE(defaults.synchronize());
    EXPECT_FALSE(defaults.synchronize());
    EXPECT_EQ(defaults.value("cbaal"), DefaultsValue("x"));
    ASSERT_EQ(place.log.diagnostics.size(), 1U);
    EXPECT_NE(place.log.diagnostics[0].find("cannot be written"), std::string::npos);
    inTheWay.open(QIODevice::ReadOnly);
    EXPECT_EQ(inTheWay.readAll(), "keep me");
}

TEST(JsonFileUserDefaults, WhatCouldNotBeSavedIsSavedOnceTheObstacleIsGone)
{
    DefaultsFolder place;
    QFile inTheWay(place.folder());
    inTheWay.open(QIODevice::WriteOnly);
    inTheWay.close();
    qt::JsonFileUserDefaults defaults = place.open();
    defaults.setValue("cbaal", "x");
    ASSERT_FALSE(defaults.synchronize());
    inTheWay.remove();

    EXPECT_TRUE(defaults.synchronize());
    EXPECT_EQ(place.open().value("cbaal"), DefaultsValue("x"));
}

TEST(JsonFileUserDefaults, AFullDiskLeavesTheFileAsItWasAtEveryByte)
{
    DefaultsFolder place;
    place.put(R"({"cbaal": "old"})");
    qt::JsonFileUserDefaults defaults = place.open();
    defaults.setValue("cbaal", "new");
    const auto size =
        static_cast<rlim_t>(QJsonDocument(QJsonObject{{"cbaal", "new"}}).toJson().size());

    EXPECT_EQ(firstRoomThatHarms(defaults, place, size), std::nullopt);
    EXPECT_EQ(defaults.value("cbaal"), DefaultsValue("new"));
    EXPECT_FALSE(place.log.diagnostics.empty());
    EXPECT_TRUE(defaults.synchronize());
    EXPECT_EQ(place.open().value("cbaal"), DefaultsValue("new"));
}

TEST(JsonFileUserDefaults, WhatAFullDiskDidNotTakeIsSavedOnceThereIsRoomThoughNobodyAsksAgain)
{
    DefaultsFolder place;
    qt::JsonFileUserDefaults defaults = place.open();
    defaults.setValue("cbaal", "x");
    ASSERT_FALSE(synchronizeOnFullDisk(defaults, 0));

    EXPECT_TRUE(desktop::waitUntil(
        [&] { return place.open().value("cbaal") == DefaultsValue("x"); }, std::chrono::seconds(20)
    ));
    EXPECT_TRUE(defaults.synchronize());
    EXPECT_EQ(place.log.diagnostics.size(), 1U);
}

TEST(JsonFileUserDefaults, ADiskThatStaysFullIsReportedOnce)
{
    DefaultsFolder place;
    const FullDisk disk(0);
    qt::JsonFileUserDefaults defaults = place.open();
    defaults.setValue("cbaal", "x");
    EXPECT_FALSE(defaults.synchronize());

    // Longer than it takes until the first attempt that nobody asked for.
    EXPECT_TRUE(desktop::holdsFor(
        [&] { return !QFile::exists(place.file()); }, std::chrono::milliseconds(1500)
    ));
    EXPECT_FALSE(defaults.synchronize());
    EXPECT_EQ(place.log.diagnostics.size(), 1U);
}

TEST(JsonFileUserDefaults, ADiskThatDoesNotAnswerIsNotWaitedForAndTakesTheValuesLater)
{
    DefaultsFolder place;
    place.put(R"({"cbaal": "old"})");
    qt::JsonFileUserDefaults defaults = place.openImpatiently();
    {
        const desktop::HeldFile held(place.file().toStdString());
        const auto before = std::chrono::steady_clock::now();
        for (const std::string text : {"first", "second", "third"}) {
            defaults.setValue("cbaal", text);
            EXPECT_FALSE(defaults.synchronize());
            EXPECT_EQ(defaults.value("cbaal"), DefaultsValue(text));
        }
        EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(1));
    }
    EXPECT_TRUE(defaults.finish());
    EXPECT_EQ(place.open().value("cbaal"), DefaultsValue("third"));
}

TEST(JsonFileUserDefaults, TheEndWaitsForTheValuesThatAreUnderWay)
{
    DefaultsFolder place;
    place.put("{}");
    {
        qt::JsonFileUserDefaults defaults = place.openImpatiently();
        const desktop::HeldFile held(place.file().toStdString());
        defaults.setValue("cbaal", "x");
        EXPECT_FALSE(defaults.synchronize());
    }
    EXPECT_EQ(place.open().value("cbaal"), DefaultsValue("x"));
}
