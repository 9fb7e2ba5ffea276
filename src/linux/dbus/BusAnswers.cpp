#include "linux/dbus/BusAnswers.h"

#include "linux/dbus/Within.h"
#include "linux/descriptors/FileDescriptor.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <utility>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace dbus {

namespace {

/// The name of the socket as the kernel takes it, or nothing for an address of another kind.
QByteArray socketName(const QByteArray& address)
{
    constexpr QByteArrayView TRANSPORT("unix:");
    if (!address.startsWith(TRANSPORT)) {
        return {};
    }
    for (const QByteArray& part : address.mid(TRANSPORT.size()).split(',')) {
        const qsizetype equals = part.indexOf('=');
        QByteArray value = QByteArray::fromPercentEncoding(part.mid(equals + 1));
        if (part.startsWith("path=")) {
            return value;
        }
        if (part.startsWith("abstract=")) {
            return QByteArray(1, '\0') + value;
        }
    }
    return {};
}

descriptors::FileDescriptor connectTo(const QByteArray& name)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const auto length = static_cast<std::size_t>(name.size());
    if (length >= sizeof address.sun_path) {
        return {};
    }
    std::memcpy(address.sun_path, name.constData(), length);
    const bool isAbstract = name.startsWith('\0');
    const std::size_t size = offsetof(sockaddr_un, sun_path) + length + (isAbstract ? 0 : 1);
    descriptors::FileDescriptor made(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    const bool connected =
        made.isOpen() && ::connect(
                             made.get(),
                             static_cast<const sockaddr*>(static_cast<const void*>(&address)),
                             static_cast<socklen_t>(size)
                         ) == 0;
    return connected ? std::move(made) : descriptors::FileDescriptor();
}

/// Every bus answers this greeting, be it with a refusal.
bool greets(const descriptors::FileDescriptor& bus)
{
    constexpr std::array<char, 7> GREETING{'\0', 'A', 'U', 'T', 'H', '\r', '\n'};
    if (::send(bus.get(), GREETING.data(), GREETING.size(), MSG_NOSIGNAL) !=
        static_cast<ssize_t>(GREETING.size())) {
        return false;
    }
    pollfd source{bus.get(), POLLIN, 0};
    while (::poll(&source, 1, -1) == -1) {
        if (errno != EINTR) {
            return false;
        }
    }
    char first = 0;
    return ::recv(bus.get(), &first, 1, 0) == 1;
}

} // namespace

bool busAnswers(const std::string& address)
{
    for (const QByteArray& alternative : QByteArray::fromStdString(address).split(';')) {
        const QByteArray name = socketName(alternative);
        if (name.isEmpty()) {
            return true;
        }
        const descriptors::FileDescriptor bus = connectTo(name);
        if (bus.isOpen()) {
            return greets(bus);
        }
    }
    return false;
}

bool busIsSilent(const std::string& address, std::chrono::milliseconds time)
{
    return !within(time, [address] { return busAnswers(address); }).has_value();
}

} // namespace dbus
