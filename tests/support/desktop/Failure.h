// What the pieces of the test desktop throw when they cannot be had at all.
#pragma once

#include <stdexcept>

namespace desktop {

class Failure : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace desktop
