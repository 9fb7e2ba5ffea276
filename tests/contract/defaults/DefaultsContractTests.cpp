// What every defaults database promises: the one in memory that the logic is tested with, and the
// file.
#include "fakes/FakeLog.h"
#include "fakes/FakeUserDefaults.h"
#include "linux/qt/JsonFileUserDefaults.h"

#include <QTemporaryDir>

#include <chrono>

#include <gtest/gtest.h>

namespace {

using platform::DefaultsValue;

class InMemory
{
public:
    platform::UserDefaults& defaults() { return fake; }

    void setAppearance(const std::string& style)
    {
        fake.domains[platform::GLOBAL_DOMAIN]["AppleInterfaceStyle"] = style;
    }

    void setPlainAppearance() { fake.domains[platform::GLOBAL_DOMAIN].clear(); }

private:
    fakes::Calls calls;
    fakes::FakeUserDefaults fake{calls};
};

class InAFile
{
public:
    platform::UserDefaults& defaults() { return file; }

    void setAppearance(const std::string& wanted) { style = wanted; }

    void setPlainAppearance() { style.reset(); }

private:
    QTemporaryDir folder;
    fakes::FakeLog log;
    std::optional<std::string> style;
    qt::JsonFileUserDefaults file{
        folder.filePath("defaults.json").toStdString(),
        [this] { return style; },
        log,
        std::chrono::seconds(60)};
};

template <typename Subject> class DefaultsContract : public testing::Test
{
protected:
    Subject subject;
    platform::UserDefaults& defaults = subject.defaults();
};

using Subjects = testing::Types<InMemory, InAFile>;
TYPED_TEST_SUITE(DefaultsContract, Subjects);

} // namespace

TYPED_TEST(DefaultsContract, AKeyNeverWrittenHasNoValue)
{
    EXPECT_EQ(this->defaults.value("cbaal"), std::nullopt);
}

TYPED_TEST(DefaultsContract, AValueCountsBeforeAndAfterItIsMadeDurable)
{
    this->defaults.setValue("cbaal", "org.gnome.Calculator");
    EXPECT_EQ(this->defaults.value("cbaal"), DefaultsValue("org.gnome.Calculator"));

    EXPECT_TRUE(this->defaults.synchronize());
    EXPECT_EQ(this->defaults.value("cbaal"), DefaultsValue("org.gnome.Calculator"));
}

TYPED_TEST(DefaultsContract, ALaterValueReplacesAnEarlierOne)
{
    this->defaults.setValue("cbaal", "x");
    this->defaults.synchronize();
    this->defaults.setValue("cbaal", "y");
    this->defaults.synchronize();

    EXPECT_EQ(this->defaults.value("cbaal"), DefaultsValue("y"));
}

TYPED_TEST(DefaultsContract, EmptyTextsQuotesAndOtherScriptsComeBackUnchanged)
{
    for (const std::string text : {"", "\"\\\n\t", "Größe; 計算機 🔒", " x "}) {
        this->defaults.setValue("cbaal", text);
        EXPECT_TRUE(this->defaults.synchronize());
        EXPECT_EQ(this->defaults.value("cbaal"), DefaultsValue(text));
    }
}

TYPED_TEST(DefaultsContract, ARemovedKeyHasNoValue)
{
    this->defaults.setValue("cbaal", "x");
    this->defaults.synchronize();
    this->defaults.removeObject("cbaal");
    EXPECT_EQ(this->defaults.value("cbaal"), std::nullopt);

    EXPECT_TRUE(this->defaults.synchronize());
    EXPECT_EQ(this->defaults.value("cbaal"), std::nullopt);
}

TYPED_TEST(DefaultsContract, RemovingAnAbsentKeyDoesNothing)
{
    this->defaults.removeObject("cbaal");

    EXPECT_TRUE(this->defaults.synchronize());
    EXPECT_EQ(this->defaults.value("cbaal"), std::nullopt);
}

TYPED_TEST(DefaultsContract, TheGlobalDomainHoldsTheAppearanceAsItIsNow)
{
    this->subject.setAppearance("Dark");
    auto domain = this->defaults.persistentDomain(platform::GLOBAL_DOMAIN);
    ASSERT_TRUE(domain.has_value());
    EXPECT_EQ(domain->at("AppleInterfaceStyle"), DefaultsValue("Dark"));

    this->subject.setPlainAppearance();
    domain = this->defaults.persistentDomain(platform::GLOBAL_DOMAIN);
    ASSERT_TRUE(domain.has_value());
    EXPECT_EQ(domain->count("AppleInterfaceStyle"), 0U);
}

TYPED_TEST(DefaultsContract, AnUnknownDomainIsAbsent)
{
    EXPECT_EQ(this->defaults.persistentDomain("com.quorvent.None"), std::nullopt);
}
