// What every keychain does: the fake, the embedded one, and the one in a real keyring.
#include "KeyringSession.h"
#include "desktop/Failure.h"
#include "fakes/FakeKeychainItems.h"
#include "linux/secretservice/SecretServiceKeychain.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

namespace {

using platform::Bytes;
using platform::KeychainStatus;

class OnTheFake
{
public:
    platform::KeychainItems& items() { return fake; }

    void reopen() {}

private:
    fakes::Calls calls;
    fakes::FakeKeychainItems fake{calls};
};

/// Items that the gate hands out in a session of its own.
class BehindTheGate
{
public:
    platform::KeychainItems& items() { return *opened; }

    void reopen()
    {
        opened.reset();
        opened = session.open();
    }

protected:
    KeyringSession session;
    std::unique_ptr<platform::KeychainItems> opened;
};

/// Without a keyring.
class InTheFolder : public BehindTheGate
{
public:
    InTheFolder() { opened = session.open(); }
};

class InTheKeyring : public BehindTheGate
{
public:
    InTheKeyring()
    {
        session.startKeyring();
        opened = session.open();
        if (dynamic_cast<secretservice::SecretServiceKeychain*>(opened.get()) == nullptr) {
            throw desktop::Failure("not in the keyring: " + session.refusal());
        }
    }
};

template <class Implementation> class KeychainContract : public testing::Test
{
protected:
    platform::KeychainItems& items() { return implementation.items(); }

    std::optional<std::string> text(const std::string& account) { return textOf(items(), account); }

    Implementation implementation;
};

using Implementations = testing::Types<OnTheFake, InTheFolder, InTheKeyring>;
TYPED_TEST_SUITE(KeychainContract, Implementations);

TYPED_TEST(KeychainContract, AccountNeverWrittenIsNotFound)
{
    const platform::KeychainLookup lookup = this->items().copyMatching("a");

    EXPECT_EQ(lookup.status, KeychainStatus::ItemNotFound);
    EXPECT_FALSE(lookup.data.has_value());
}

TYPED_TEST(KeychainContract, AddedItemIsFoundAndOutlivesTheKeychain)
{
    EXPECT_EQ(this->items().add("a", bytes("pässword")), KeychainStatus::NoError);
    EXPECT_EQ(this->text("a"), "pässword");

    this->implementation.reopen();
    EXPECT_EQ(this->text("a"), "pässword");
}

TYPED_TEST(KeychainContract, SecondAddOfAnAccountIsADuplicateAndChangesNothing)
{
    this->items().add("a", bytes("x"));

    EXPECT_EQ(this->items().add("a", bytes("y")), KeychainStatus::DuplicateItem);
    EXPECT_EQ(this->text("a"), "x");
}

TYPED_TEST(KeychainContract, RemoveThenAddLeavesTheNewValueOnly)
{
    this->items().add("a", bytes("x"));
    EXPECT_EQ(this->items().remove("a"), KeychainStatus::NoError);
    EXPECT_EQ(this->items().add("a", bytes("y")), KeychainStatus::NoError);

    this->implementation.reopen();
    EXPECT_EQ(this->text("a"), "y");
    EXPECT_EQ(this->items().remove("a"), KeychainStatus::NoError);
    EXPECT_EQ(this->items().remove("a"), KeychainStatus::ItemNotFound);
}

TYPED_TEST(KeychainContract, EmptyDataIsAnItemOfItsOwn)
{
    EXPECT_EQ(this->items().add("a", {}), KeychainStatus::NoError);

    this->implementation.reopen();
    const platform::KeychainLookup lookup = this->items().copyMatching("a");
    EXPECT_EQ(lookup.status, KeychainStatus::NoError);
    EXPECT_EQ(lookup.data, Bytes());
    EXPECT_EQ(this->items().add("a", bytes("x")), KeychainStatus::DuplicateItem);
}

TYPED_TEST(KeychainContract, DataMayHoldAnyByte)
{
    Bytes all;
    for (unsigned value = 0; value < 256; ++value) {
        all.push_back(static_cast<std::uint8_t>(value));
    }
    EXPECT_EQ(this->items().add("a", all), KeychainStatus::NoError);

    this->implementation.reopen();
    EXPECT_EQ(this->items().copyMatching("a").data, all);
}

TYPED_TEST(KeychainContract, AccountsAreComparedExactly)
{
    this->items().add("com.quorvent.Tarvel (Password)", bytes("1"));
    this->items().add("com.quorvent.tarvel (Password)", bytes("2"));
    this->items().add("com.quorvent.Tarvel (Password) ", bytes("3"));

    this->implementation.reopen();
    EXPECT_EQ(this->text("com.quorvent.Tarvel (Password)"), "1");
    EXPECT_EQ(this->text("com.quorvent.tarvel (Password)"), "2");
    EXPECT_EQ(this->text("com.quorvent.Tarvel (Password) "), "3");
    EXPECT_EQ(this->text("com.quorvent.Tarvel"), std::nullopt);
}

TYPED_TEST(KeychainContract, RemoveTakesOneAccountOnly)
{
    this->items().add("a", bytes("1"));
    this->items().add("b", bytes("2"));
    this->items().remove("a");

    this->implementation.reopen();
    EXPECT_EQ(this->text("a"), std::nullopt);
    EXPECT_EQ(this->text("b"), "2");
}

TYPED_TEST(KeychainContract, RemoveAllLeavesNothingAndSaysWhenThereWasNothing)
{
    EXPECT_EQ(this->items().removeAll(), KeychainStatus::ItemNotFound);
    this->items().add("a", bytes("1"));
    this->items().add("b", bytes("2"));
    EXPECT_EQ(this->items().removeAll(), KeychainStatus::NoError);

    this->implementation.reopen();
    EXPECT_EQ(this->text("a"), std::nullopt);
    EXPECT_EQ(this->text("b"), std::nullopt);
}

} // namespace
