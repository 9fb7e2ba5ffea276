// Reserved for operations on lists of applications; there are none.
#pragma once

namespace applications {

class ListOperations
{
public:
    ListOperations() = default;
};

} // namespace applications
