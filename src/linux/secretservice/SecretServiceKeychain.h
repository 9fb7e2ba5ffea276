// The keychain in the user's Secret Service. See `SecretServiceStore` for how items look there.
// Main thread.
#pragma once

#include "linux/secretservice/KeptMarker.h"
#include "linux/secretservice/SecretServiceStore.h"
#include "linux/secretservice/WriteThroughKeychain.h"
#include "platform/Report.h"

#include <memory>
#include <utility>

namespace secretservice {

class SecretServiceKeychain final : public WriteThroughKeychain
{
public:
    /// `known` is what the service holds; the service must be open to this user.
    SecretServiceKeychain(KeptMarker marker, Items known, const platform::Report& report)
        : WriteThroughKeychain(
              std::make_unique<SecretServiceStore>(std::move(marker)), std::move(known), report
          )
    {
    }
};

} // namespace secretservice
