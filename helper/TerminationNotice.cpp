#include "helper/TerminationNotice.h"

namespace helper {

bool TerminationNotice::matches(std::string_view name, std::string_view object)
{
    return name == NAME && object == OBJECT;
}

} // namespace helper
