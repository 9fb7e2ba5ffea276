#include "Secrets.h"
#include "linux/secretservice/ItemSealer.h"

#include <span>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace secretservice {
namespace {

constexpr auto ACCOUNT = "com.quorvent.Tarvel (Password)";

bool contains(const SecretBytes& bytes, std::string_view part)
{
    return text(bytes).find(part) != std::string::npos;
}

/// Whether data of that length, of bytes of every value, comes out as it went in.
bool survives(const ItemSealer& sealer, std::size_t length)
{
    SecretBytes data(length);
    for (std::size_t at = 0; at < length; ++at) {
        data[at] = static_cast<std::uint8_t>(at * 7 + length);
    }
    const auto item = sealer.open(sealer.seal(ACCOUNT, data));
    return item.has_value() && item->data == data;
}

TEST(ItemSealer, OpensWhatItSealed)
{
    const ItemSealer sealer(ItemSealer::randomKey());
    const auto item = sealer.open(sealer.seal(ACCOUNT, secret("pässword")));

    ASSERT_TRUE(item.has_value());
    EXPECT_EQ(item->account, ACCOUNT);
    EXPECT_EQ(text(item->data), "pässword");
}

TEST(ItemSealer, CarriesEveryByteAndEveryLength)
{
    const ItemSealer sealer(ItemSealer::randomKey());
    for (std::size_t length = 0; length < 600; ++length) {
        ASSERT_TRUE(survives(sealer, length)) << length;
    }
}

TEST(ItemSealer, ShowsNeitherAccountNorDataNorLength)
{
    const ItemSealer sealer(ItemSealer::randomKey());
    const SecretBytes sealed = sealer.seal(ACCOUNT, secret("password"));

    EXPECT_FALSE(contains(sealed, "password"));
    EXPECT_FALSE(contains(sealed, "quorvent"));
    EXPECT_EQ(sealed.size(), sealer.seal(ACCOUNT, secret("another, longer one")).size());
}

TEST(ItemSealer, SealsTheSameDataDifferentlyEachTime)
{
    const ItemSealer sealer(ItemSealer::randomKey());

    EXPECT_NE(sealer.seal(ACCOUNT, secret("x")), sealer.seal(ACCOUNT, secret("x")));
}

TEST(ItemSealer, RefusesEveryChangedBit)
{
    const ItemSealer sealer(ItemSealer::randomKey());
    const SecretBytes sealed = sealer.seal(ACCOUNT, secret("x"));
    for (std::size_t bit = 0; bit < sealed.size() * 8; ++bit) {
        SecretBytes changed = sealed;
        changed[bit / 8] ^= static_cast<std::uint8_t>(1U << (bit % 8));
        ASSERT_FALSE(sealer.open(changed).has_value()) << bit;
    }
}

TEST(ItemSealer, RefusesEveryTruncation)
{
    const ItemSealer sealer(ItemSealer::randomKey());
    const SecretBytes sealed = sealer.seal(ACCOUNT, secret("x"));
    for (std::size_t length = 0; length < sealed.size(); ++length) {
        ASSERT_FALSE(sealer.open(std::span(sealed).first(length)).has_value()) << length;
    }
}

TEST(ItemSealer, RefusesAnotherKeysItem)
{
    const ItemSealer one(ItemSealer::randomKey());
    const ItemSealer other(ItemSealer::randomKey());

    EXPECT_FALSE(other.open(one.seal(ACCOUNT, secret("x"))).has_value());
}

TEST(ItemSealer, NamesAreStablePerKeyAndTellNothing)
{
    const SecretBytes key = ItemSealer::randomKey();
    const std::string name = ItemSealer(key).name(ACCOUNT);

    EXPECT_EQ(ItemSealer(key).name(ACCOUNT), name);
    EXPECT_NE(ItemSealer(key).name("com.quorvent.Tarvel (Active)"), name);
    EXPECT_NE(ItemSealer(ItemSealer::randomKey()).name(ACCOUNT), name);
    EXPECT_EQ(name.find_first_not_of("0123456789abcdef"), std::string::npos);
    EXPECT_EQ(name.size(), 32U);
}

} // namespace
} // namespace secretservice
