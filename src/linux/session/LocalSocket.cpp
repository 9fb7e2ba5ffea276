#include "linux/session/LocalSocket.h"

#include <array>
#include <cerrno>
#include <cstring>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

namespace session {

namespace {

constexpr int BACKLOG = 32;
constexpr std::size_t LONGEST_MESSAGE = 64;

descriptors::FileDescriptor makeSocket()
{
    return descriptors::FileDescriptor(
        ::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)
    );
}

bool setAddress(sockaddr_un& address, const std::string& path)
{
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) {
        errno = ENAMETOOLONG;
        return false;
    }
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    return true;
}

} // namespace

descriptors::FileDescriptor listenAt(const std::string& path)
{
    sockaddr_un address = {};
    descriptors::FileDescriptor socket = makeSocket();
    const bool listens =
        socket.isOpen() && setAddress(address, path) &&
        ::bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
        ::listen(socket.get(), BACKLOG) == 0;
    return listens ? std::move(socket) : descriptors::FileDescriptor();
}

descriptors::FileDescriptor connectTo(const std::string& path)
{
    sockaddr_un address = {};
    descriptors::FileDescriptor socket = makeSocket();
    const bool connected =
        socket.isOpen() && setAddress(address, path) &&
        ::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    return connected ? std::move(socket) : descriptors::FileDescriptor();
}

descriptors::FileDescriptor acceptFrom(const descriptors::FileDescriptor& listener)
{
    return descriptors::FileDescriptor(
        ::accept4(listener.get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK)
    );
}

std::optional<Peer> peerOf(const descriptors::FileDescriptor& socket)
{
    ucred credentials = {};
    socklen_t size = sizeof credentials;
    if (::getsockopt(socket.get(), SOL_SOCKET, SO_PEERCRED, &credentials, &size) != 0) {
        return std::nullopt;
    }
    return Peer{credentials.pid, credentials.uid};
}

bool sendMessage(const descriptors::FileDescriptor& socket, const std::string& text)
{
    const ssize_t sent =
        ::send(socket.get(), text.data(), text.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    return sent == static_cast<ssize_t>(text.size());
}

std::optional<std::string> receiveMessage(const descriptors::FileDescriptor& socket)
{
    std::array<char, LONGEST_MESSAGE> buffer{};
    const ssize_t size = ::recv(socket.get(), buffer.data(), buffer.size(), MSG_DONTWAIT);
    if (size < 0 && (errno == EAGAIN || errno == EINTR)) {
        return std::nullopt;
    }
    return std::string(buffer.data(), size > 0 ? static_cast<std::size_t>(size) : 0);
}

bool waitUntilReadable(const descriptors::FileDescriptor& descriptor, int milliseconds)
{
    pollfd wanted = {descriptor.get(), POLLIN, 0};
    return ::poll(&wanted, 1, milliseconds) > 0;
}

} // namespace session
