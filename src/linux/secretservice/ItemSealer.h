// Seals items with a key so that whoever reads the files learns neither accounts nor data nor the
// data's exact length, and cannot change or exchange them unnoticed. Pure; any one thread at a
// time.
#pragma once

#include "linux/secretservice/SecretBytes.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace secretservice {

class ItemSealer
{
public:
    struct Item
    {
        std::string account;
        SecretBytes data;
    };

    static constexpr std::size_t KEY_SIZE = crypto_kdf_KEYBYTES;

    static SecretBytes randomKey();

    /// `key` has `KEY_SIZE` bytes.
    explicit ItemSealer(std::span<const std::uint8_t> key);

    /// Name for the account's file: the same for the same key, telling nothing without it.
    [[nodiscard]] std::string name(const std::string& account) const;

    [[nodiscard]] SecretBytes seal(const std::string& account, const SecretBytes& data) const;

    /// Nothing when `sealed` is not, to the last bit, what was sealed with this key.
    [[nodiscard]] std::optional<Item> open(std::span<const std::uint8_t> sealed) const;

private:
    SecretBytes namingKey;
    SecretBytes sealingKey;
};

} // namespace secretservice
