#include "platform/Fatal.h"

#include <cstdlib>
#include <iostream>

namespace platform {

void fatal(std::string_view message)
{
    std::cerr << "fatal: " << message << std::endl;
    std::abort();
}

} // namespace platform
