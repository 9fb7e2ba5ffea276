// What marks an item of the Secret Service as one of ours.
#pragma once

#include "linux/secretservice/Glib.h"

#include <string>

#include <libsecret/secret.h>

namespace secretservice {

constexpr auto ACCOUNT_ATTRIBUTE = "account";

const SecretSchema& genericPasswordSchema();

/// The attributes that find the account's item.
AttributesPtr accountAttributes(const std::string& account);

/// The attributes that find every item of the schema.
AttributesPtr anyAttributes();

} // namespace secretservice
