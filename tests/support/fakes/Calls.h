// What the fakes were asked to do, in order, as one readable list: "port operation arguments".
#pragma once

#include <string>
#include <vector>

namespace fakes {

using Calls = std::vector<std::string>;

} // namespace fakes
