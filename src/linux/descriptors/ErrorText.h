// What a system call's error is called, as the end of a sentence. Any thread.
#pragma once

#include <cerrno>
#include <string>
#include <system_error>

namespace descriptors {

/// Without an error: that of the last call.
inline std::string errorText(int error = errno)
{
    return std::generic_category().message(error);
}

} // namespace descriptors
