// Where an adapter says, in one line, what the user or a developer should know. Any thread may
// call.
#pragma once

#include <functional>
#include <string_view>

namespace platform {

using Report = std::function<void(std::string_view line)>;

} // namespace platform
