// The keychain of a session without a Secret Service. See `EmbeddedStore` for what it protects.
// Main thread.
#pragma once

#include "linux/secretservice/EmbeddedStore.h"
#include "linux/secretservice/WriteThroughKeychain.h"
#include "platform/Report.h"

#include <filesystem>
#include <memory>
#include <utility>

namespace secretservice {

class EmbeddedKeychain final : public WriteThroughKeychain
{
public:
    /// `known` is what the folder holds.
    EmbeddedKeychain(
        const std::filesystem::path& folder, Items known, const platform::Report& report
    )
        : WriteThroughKeychain(
              std::make_unique<EmbeddedStore>(folder, report), std::move(known), report
          )
    {
    }
};

} // namespace secretservice
