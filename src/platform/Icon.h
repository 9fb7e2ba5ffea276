// An image that the core hands around and never looks into.
#pragma once

#include <memory>

namespace platform {

class Icon
{
public:
    Icon() = default;
    Icon(const Icon&) = delete;
    Icon& operator=(const Icon&) = delete;
    Icon(Icon&&) = delete;
    Icon& operator=(Icon&&) = delete;
    virtual ~Icon() = default;
};

/// Empty where there is no icon.
using IconHandle = std::shared_ptr<const Icon>;

} // namespace platform
