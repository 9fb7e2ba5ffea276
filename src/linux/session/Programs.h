// The names under which the programs of a session, and the desktop, know the product and its
// programs.
#pragma once

namespace session {

inline constexpr auto AGENT = "Tarvel";
inline constexpr auto HELPER = "OlvoHelper";

/// Of the desktop entry, of folders and of notices.
inline constexpr auto IDENTIFIER = "com.quorvent.Tarvel";
inline constexpr auto HELPER_IDENTIFIER = "com.quorvent.OlvoHelper";

} // namespace session
