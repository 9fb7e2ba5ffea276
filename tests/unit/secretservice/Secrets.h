// Short ways to write and to compare secrets in tests.
#pragma once

#include "linux/secretservice/SecretBytes.h"

#include <string>
#include <string_view>

namespace secretservice {

inline SecretBytes secret(std::string_view text)
{
    return {text.begin(), text.end()};
}

inline std::string text(const SecretBytes& bytes)
{
    return {bytes.begin(), bytes.end()};
}

} // namespace secretservice
