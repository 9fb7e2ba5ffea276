// Items of the kind that Tarvel keeps in the Secret Service, as another program sees them.
#pragma once

#include <optional>
#include <string>

namespace desktop {

/// Both speak to the service on the bus at `busAddress` and throw `Failure` when it refuses.
/// `account` is the whole text, "com.quorvent.Tarvel (Password)" for one.
void storeItem(
    const std::string& busAddress, const std::string& account, const std::string& secret
);

/// Nothing when there is no such item.
std::optional<std::string> lookUpItem(const std::string& busAddress, const std::string& account);

} // namespace desktop
