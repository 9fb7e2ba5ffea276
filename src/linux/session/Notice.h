// A notice from one program of the session to others: a signal on the session bus with two
// arguments, its name and what it is about.
#pragma once

namespace session {

inline constexpr auto NOTICE_PATH = "/com/quorvent/DistributedNotification";
inline constexpr auto NOTICE_INTERFACE = "com.quorvent.DistributedNotification";
inline constexpr auto NOTICE_MEMBER = "Posted";

} // namespace session
