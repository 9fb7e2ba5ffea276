// An image that the core hands around and never looks into.
#pragma once

#include "platform/Port.h"

#include <memory>

namespace platform {

class Icon : public Port
{
};

/// Empty where there is no icon.
using IconHandle = std::shared_ptr<const Icon>;

} // namespace platform
