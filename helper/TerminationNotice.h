// The notice by which the agent sends the helper home: a signal on the session bus.
#pragma once

#include "linux/session/Programs.h"

#include <string_view>

namespace helper {

class TerminationNotice
{
public:
    static constexpr std::string_view NAME = "TERMINATE_HELPER_TARVEL";
    static constexpr std::string_view OBJECT = session::IDENTIFIER;

    /// Both arguments of the signal, compared exactly: notices about other programs are not ours.
    static bool matches(std::string_view name, std::string_view object);
};

} // namespace helper
