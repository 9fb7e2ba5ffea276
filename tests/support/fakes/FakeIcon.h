// An icon that remembers where it came from.
#pragma once

#include "platform/Icon.h"

#include <string>
#include <utility>

namespace fakes {

class FakeIcon final : public platform::Icon
{
public:
    explicit FakeIcon(std::string source) : source(std::move(source)) {}

    std::string source;
};

} // namespace fakes
