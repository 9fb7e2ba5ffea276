// What every port has in common: it is used through a reference, never copied, and nothing that
// goes wrong behind it leaves it as an exception.
#pragma once

namespace platform {

class Port
{
public:
    Port() = default;
    Port(const Port&) = delete;
    Port& operator=(const Port&) = delete;
    Port(Port&&) = delete;
    Port& operator=(Port&&) = delete;
    virtual ~Port() = default;
};

} // namespace platform
