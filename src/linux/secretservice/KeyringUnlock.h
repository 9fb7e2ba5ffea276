// Gets the user's keyring open, through its own prompt where that is needed. Blocks as long as the
// prompt is up. Worker thread.
#pragma once

#include "linux/secretservice/ItemStore.h"
#include "linux/secretservice/SecretServiceSession.h"
#include "platform/Report.h"

#include <string>

namespace secretservice {

enum class Unlocking
{
    Open,        // all that may hold items of ours can be read
    StaysLocked, // the prompt was dismissed, or could not be shown
    Failed       // the service went away or did not answer
};

/// `itemsExpected`: when none is found, every collection that is locked is opened to look there
/// too. `reason` says why it failed.
Unlocking unlockKeyring(
    SecretServiceSession& session,
    bool itemsExpected,
    const platform::Report& report,
    std::string& reason
);

} // namespace secretservice
