#include "linux/secretservice/ItemSealer.h"

#include "platform/Fatal.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace secretservice {

namespace {

// A sealed item: the mark of the format, a nonce, then the box. In the box: the account's length
// (four bytes, lowest first), the account, the data, padding.
constexpr std::string_view FORMAT = "TarvelItem1\n";
constexpr std::size_t NONCE_SIZE = crypto_secretbox_NONCEBYTES;
constexpr std::size_t HEADER_SIZE = FORMAT.size() + NONCE_SIZE;
constexpr std::size_t LENGTH_SIZE = 4;
constexpr std::size_t PADDING_BLOCK = 256;
constexpr std::size_t NAME_SIZE = 16;
constexpr auto KEY_CONTEXT = "TarvelKC";
constexpr std::uint64_t NAMING_KEY = 1;
constexpr std::uint64_t SEALING_KEY = 2;

void prepareLibrary()
{
    if (sodium_init() < 0) {
        platform::fatal("no source of randomness for the keychain");
    }
}

SecretBytes derive(std::span<const std::uint8_t> key, std::uint64_t number, std::size_t size)
{
    SecretBytes derived(size);
    crypto_kdf_derive_from_key(derived.data(), derived.size(), number, KEY_CONTEXT, key.data());
    return derived;
}

SecretBytes box(const std::string& account, const SecretBytes& data)
{
    SecretBytes plain;
    // Once for all, so that no copy is left behind by growth.
    plain.reserve(LENGTH_SIZE + account.size() + data.size() + PADDING_BLOCK);
    for (std::size_t byte = 0; byte < LENGTH_SIZE; ++byte) {
        plain.push_back(static_cast<std::uint8_t>((account.size() >> (8 * byte)) & 0xFFU));
    }
    plain.insert(plain.end(), account.begin(), account.end());
    plain.insert(plain.end(), data.begin(), data.end());
    const std::size_t length = plain.size();
    plain.resize(length + PADDING_BLOCK - length % PADDING_BLOCK);
    std::size_t padded = 0;
    if (sodium_pad(&padded, plain.data(), length, PADDING_BLOCK, plain.size()) != 0 ||
        padded != plain.size()) {
        platform::fatal("no room to pad a keychain item");
    }
    return plain;
}

std::optional<ItemSealer::Item> unbox(const SecretBytes& plain)
{
    std::size_t length = 0;
    if (sodium_unpad(&length, plain.data(), plain.size(), PADDING_BLOCK) != 0 ||
        length < LENGTH_SIZE) {
        return std::nullopt;
    }
    std::size_t accountLength = 0;
    for (std::size_t byte = 0; byte < LENGTH_SIZE; ++byte) {
        accountLength |= std::size_t{plain[byte]} << (8 * byte);
    }
    if (accountLength > length - LENGTH_SIZE) {
        return std::nullopt;
    }
    const std::span<const std::uint8_t> content =
        std::span(plain).subspan(LENGTH_SIZE, length - LENGTH_SIZE);
    const auto account = content.first(accountLength);
    const auto data = content.subspan(accountLength);
    return ItemSealer::Item{{account.begin(), account.end()}, {data.begin(), data.end()}};
}

} // namespace

SecretBytes ItemSealer::randomKey()
{
    prepareLibrary();
    SecretBytes key(KEY_SIZE);
    crypto_kdf_keygen(key.data());
    return key;
}

ItemSealer::ItemSealer(std::span<const std::uint8_t> key)
{
    prepareLibrary();
    if (key.size() != KEY_SIZE) {
        platform::fatal("a keychain key of the wrong length");
    }
    namingKey = derive(key, NAMING_KEY, crypto_generichash_KEYBYTES);
    sealingKey = derive(key, SEALING_KEY, crypto_secretbox_KEYBYTES);
}

std::string ItemSealer::name(const std::string& account) const
{
    std::array<std::uint8_t, NAME_SIZE> hash = {};
    const SecretBytes text(account.begin(), account.end());
    crypto_generichash(
        hash.data(), hash.size(), text.data(), text.size(), namingKey.data(), namingKey.size()
    );
    std::string hex(2 * NAME_SIZE + 1, '\0');
    sodium_bin2hex(hex.data(), hex.size(), hash.data(), hash.size());
    hex.pop_back();
    return hex;
}

SecretBytes ItemSealer::seal(const std::string& account, const SecretBytes& data) const
{
    const SecretBytes plain = box(account, data);
    SecretBytes sealed(HEADER_SIZE + crypto_secretbox_MACBYTES + plain.size());
    std::ranges::copy(FORMAT, sealed.begin());
    std::uint8_t* nonce = sealed.data() + FORMAT.size();
    randombytes_buf(nonce, NONCE_SIZE);
    crypto_secretbox_easy(
        sealed.data() + HEADER_SIZE, plain.data(), plain.size(), nonce, sealingKey.data()
    );
    return sealed;
}

std::optional<ItemSealer::Item> ItemSealer::open(std::span<const std::uint8_t> sealed) const
{
    if (sealed.size() < HEADER_SIZE + crypto_secretbox_MACBYTES ||
        !std::ranges::equal(sealed.first(FORMAT.size()), FORMAT)) {
        return std::nullopt;
    }
    const auto nonce = sealed.subspan(FORMAT.size(), NONCE_SIZE);
    const auto closed = sealed.subspan(HEADER_SIZE);
    SecretBytes plain(closed.size() - crypto_secretbox_MACBYTES);
    const int status = crypto_secretbox_open_easy(
        plain.data(), closed.data(), closed.size(), nonce.data(), sealingKey.data()
    );
    return status == 0 ? unbox(plain) : std::nullopt;
}

} // namespace secretservice
