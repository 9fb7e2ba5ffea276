// The names under which the programs of a session find each other.
#pragma once

namespace session {

inline constexpr auto AGENT = "Tarvel";
inline constexpr auto HELPER = "OlvoHelper";

} // namespace session
