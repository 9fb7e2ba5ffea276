// A defaults file that cannot be read: it reads as absent, and what was in it is never lost.
#include "DefaultsFolder.h"

#include <QFileInfo>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using platform::DefaultsValue;

/// The defaults read as absent, the damaged file is kept beside, one line has said so.
testing::AssertionResult isAbsentAndKept(DefaultsFolder& place, const QByteArray& damaged)
{
    const bool absent = place.open().value("cbaal") == std::nullopt;
    const bool kept = place.entries() == QStringList("defaults.json.damaged-1") &&
                      place.bytesOf("defaults.json.damaged-1") == damaged;
    const std::string beginning = place.file().toStdString() + " cannot be read (";
    const bool told =
        place.log.diagnostics.size() == 1 && place.log.diagnostics[0].find(beginning) == 0;
    return (absent && kept && told ? testing::AssertionSuccess() : testing::AssertionFailure())
           << "absent " << absent << ", kept " << kept << ", told " << told;
}

} // namespace

TEST(DamagedDefaults, AFileCutAtAnyByteReadsAsAbsentAndIsKept)
{
    const QByteArray whole = "{\"cbaal\": \"org.gnome.Calculator\", \"n\": [1, {\"k\": \"ü\"}]}";
    for (qsizetype length = 0; length < whole.size(); ++length) {
        DefaultsFolder place;
        place.put(whole.left(length));
        ASSERT_TRUE(isAbsentAndKept(place, whole.left(length))) << length << " bytes";
    }
}

TEST(DamagedDefaults, AfterADamagedFileNewValuesAreSaved)
{
    DefaultsFolder place;
    place.put("{");
    qt::JsonFileUserDefaults defaults = place.open();
    defaults.setValue("cbaal", "x");

    EXPECT_TRUE(defaults.synchronize());
    EXPECT_EQ(place.open().value("cbaal"), DefaultsValue("x"));
    EXPECT_EQ(place.bytesOf("defaults.json.damaged-1"), "{");
    EXPECT_EQ(place.log.diagnostics.size(), 1U);
}

TEST(DamagedDefaults, WhateverIsNoJsonObjectReadsAsAbsentAndIsKept)
{
    const QByteArray deep(100000, '[');
    for (const QByteArray& bytes :
         {QByteArray("[]"),
          QByteArray("null"),
          QByteArray("\xff\xfe{\0}\0", 6),
          QByteArray(5000, '\0'),
          deep}) {
        DefaultsFolder place;
        place.put(bytes);

        EXPECT_TRUE(isAbsentAndKept(place, bytes));
    }
}

TEST(DamagedDefaults, AnEarlierDamagedFileIsNotWrittenOver)
{
    DefaultsFolder place;
    place.put("first");
    place.open();
    place.put("second");
    place.open();

    EXPECT_EQ(place.bytesOf("defaults.json.damaged-1"), "first");
    EXPECT_EQ(place.bytesOf("defaults.json.damaged-2"), "second");
}

TEST(DamagedDefaults, AFolderInPlaceOfTheFileIsMovedAside)
{
    DefaultsFolder place;
    QDir().mkpath(place.file() + "/inner");
    qt::JsonFileUserDefaults defaults = place.open();
    EXPECT_EQ(defaults.value("cbaal"), std::nullopt);
    defaults.setValue("cbaal", "x");

    EXPECT_TRUE(defaults.synchronize());
    EXPECT_TRUE(QFileInfo::exists(place.folder() + "/defaults.json.damaged-1/inner"));
}

TEST(DamagedDefaults, APipeInPlaceOfTheFileIsNotWaitedFor)
{
    DefaultsFolder place;
    QDir().mkpath(place.folder());
    ASSERT_EQ(mkfifo(QFile::encodeName(place.file()).constData(), 0600), 0);

    EXPECT_EQ(place.open().value("cbaal"), std::nullopt);
    EXPECT_EQ(place.entries(), QStringList("defaults.json.damaged-1"));
}

TEST(DamagedDefaults, AFileThatMayNotBeReadIsKeptAside)
{
    if (geteuid() == 0) {
        GTEST_SKIP() << "the superuser may read everything";
    }
    DefaultsFolder place;
    place.put(R"({"cbaal": "x"})");
    chmod(QFile::encodeName(place.file()).constData(), 0);

    EXPECT_EQ(place.open().value("cbaal"), std::nullopt);
    EXPECT_EQ(place.entries(), QStringList("defaults.json.damaged-1"));
}

TEST(DamagedDefaults, AFileDamagedWhileTheAgentRunsIsMadeAnewFromWhatItHeld)
{
    DefaultsFolder place;
    place.put(R"({"other": "kept"})");
    qt::JsonFileUserDefaults defaults = place.open();
    place.put("{\"oth");
    defaults.setValue("cbaal", "x");

    EXPECT_TRUE(defaults.synchronize());
    EXPECT_EQ(place.open().value("other"), DefaultsValue("kept"));
    EXPECT_EQ(place.open().value("cbaal"), DefaultsValue("x"));
    EXPECT_EQ(place.bytesOf("defaults.json.damaged-1"), "{\"oth");
}
