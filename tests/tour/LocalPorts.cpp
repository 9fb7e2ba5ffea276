#include "tour/LocalPorts.h"

#include "desktop/Failure.h"

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace tour {

namespace {

constexpr std::uint16_t ANY = 0;

/// Closed at the end.
class LocalSocket
{
public:
    LocalSocket() : descriptor(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {}

    ~LocalSocket() { close(descriptor); }

    LocalSocket(const LocalSocket&) = delete;
    LocalSocket& operator=(const LocalSocket&) = delete;
    LocalSocket(LocalSocket&&) = delete;
    LocalSocket& operator=(LocalSocket&&) = delete;

    /// The port that it then has; 0 where that is taken.
    [[nodiscard]] std::uint16_t bindTo(std::uint16_t port) const
    {
        sockaddr_in address = placeOf(port);
        socklen_t size = sizeof address;
        const bool isBound = bind(descriptor, general(address), size) == 0 &&
                             getsockname(descriptor, general(address), &size) == 0;
        return isBound ? ntohs(address.sin_port) : std::uint16_t{0};
    }

    [[nodiscard]] bool connectTo(std::uint16_t port) const
    {
        sockaddr_in address = placeOf(port);
        return connect(descriptor, general(address), sizeof address) == 0;
    }

private:
    static sockaddr_in placeOf(std::uint16_t port)
    {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(port);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        return address;
    }

    static sockaddr* general(sockaddr_in& address)
    {
        return static_cast<sockaddr*>(static_cast<void*>(&address)); // as the system wants it
    }

    int descriptor;
};

} // namespace

std::uint16_t freePort(std::uint16_t wanted)
{
    for (const std::uint16_t port : {wanted, ANY}) {
        const std::uint16_t bound = LocalSocket().bindTo(port);
        if (bound != 0) {
            return bound;
        }
    }
    throw desktop::Failure("no port is free on 127.0.0.1");
}

bool somebodyListensOn(std::uint16_t port)
{
    return LocalSocket().connectTo(port);
}

} // namespace tour
