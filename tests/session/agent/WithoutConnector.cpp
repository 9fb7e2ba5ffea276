// Executes its arguments as on a kernel that refuses ordinary users the process connector; so do
// all processes that come of it.
#include <array>
#include <cerrno>
#include <cstddef>

#include <linux/filter.h>
#include <linux/netlink.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

constexpr auto LOAD = BPF_LD | BPF_W | BPF_ABS;
constexpr auto COMPARE = BPF_JMP | BPF_JEQ | BPF_K;
constexpr auto RETURN = BPF_RET | BPF_K;
constexpr auto ARGUMENTS = offsetof(seccomp_data, args);

bool refuseConnector()
{
    // What does not compare equal goes on at the last line.
    std::array<sock_filter, 8> filter{
        {{LOAD, 0, 0, offsetof(seccomp_data, nr)},
         {COMPARE, 0, 5, SYS_socket},
         {LOAD, 0, 0, ARGUMENTS},
         {COMPARE, 0, 3, AF_NETLINK},
         {LOAD, 0, 0, ARGUMENTS + 2 * sizeof(__u64)},
         {COMPARE, 0, 1, NETLINK_CONNECTOR},
         {RETURN, 0, 0, SECCOMP_RET_ERRNO | EPERM},
         {RETURN, 0, 0, SECCOMP_RET_ALLOW}}};
    const sock_fprog program{filter.size(), filter.data()};
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

} // namespace

int main(int /*count*/, char** arguments)
{
    if (refuseConnector()) {
        ::execv(arguments[1], arguments + 1);
    }
    return 127;
}
