#include "linux/proc/ProcessConnector.h"

#include "linux/descriptors/ErrorText.h"
#include "linux/proc/ConnectorProtocol.h"
#include "platform/Call.h"

#include <array>
#include <cerrno>
#include <utility>

#include <linux/cn_proc.h>
#include <linux/connector.h>
#include <linux/netlink.h>
#include <sys/random.h>
#include <sys/socket.h>

namespace proc {

ProcessConnector::ProcessConnector(PollThread& thread, ProcessConnectorOptions options)
    : thread(thread),
      options(std::move(options))
{
}

int openConnectorSocket()
{
    descriptors::FileDescriptor socket(
        ::socket(PF_NETLINK, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_CONNECTOR)
    );
    sockaddr_nl address{};
    address.nl_family = AF_NETLINK;
    address.nl_groups = CN_IDX_PROC;
    if (!socket.isOpen() ||
        ::bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        return -1;
    }
    return socket.release();
}

void ProcessConnector::start()
{
    socket = descriptors::FileDescriptor(options.open());
    if (!socket.isOpen()) {
        refuse(descriptors::errorText());
        return;
    }
    thread.watch(socket.get(), [this] { receive(); });
    ask();
}

void ProcessConnector::ask()
{
    std::vector<sock_filter> filter = connectorFilter();
    const sock_fprog program{static_cast<unsigned short>(filter.size()), filter.data()};
    const int size = options.receiveBuffer;
    // Without the filter or the room everything still works, only at a higher price.
    ::setsockopt(socket.get(), SOL_SOCKET, SO_ATTACH_FILTER, &program, sizeof program);
    ::setsockopt(socket.get(), SOL_SOCKET, SO_RCVBUF, &size, sizeof size);
    ::getrandom(&token, sizeof token, 0);
    const std::vector<std::byte> request = listenRequest(token);
    if (::send(socket.get(), request.data(), request.size(), MSG_NOSIGNAL) < 0) {
        refuse(descriptors::errorText());
        return;
    }
    thread.postAfter(options.patience, [this] {
        if (state == State::Asking) {
            refuse("no answer");
        }
    });
}

void ProcessConnector::receive()
{
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): recv fills it
    std::array<std::byte, 4096> datagram;
    while (state != State::Refused) {
        const ssize_t size = ::recv(socket.get(), datagram.data(), datagram.size(), MSG_DONTWAIT);
        if (size < 0 && errno == ENOBUFS) {
            platform::call(onLost);
            continue;
        }
        if (size < 0 && errno != EAGAIN && errno != EINTR) {
            refuse(descriptors::errorText());
        }
        if (size <= 0) {
            return;
        }
        const std::span<const std::byte> bytes(datagram.data(), static_cast<std::size_t>(size));
        for (const ConnectorEvent& event : parseConnectorMessages(bytes, token)) {
            handle(event);
        }
    }
}

void ProcessConnector::handle(const ConnectorEvent& event)
{
    if (event.kind == ConnectorEvent::Kind::Answer) {
        answered(event.error);
    } else if (state == State::Accepted) {
        platform::call(onExec, event.pid);
    }
}

void ProcessConnector::answered(std::uint32_t error)
{
    if (state != State::Asking) {
        return;
    }
    if (error != 0) {
        refuse(descriptors::errorText(static_cast<int>(error)));
        return;
    }
    state = State::Accepted;
    platform::call(onAccepted);
}

void ProcessConnector::refuse(const std::string& reason)
{
    state = State::Refused;
    if (socket.isOpen()) {
        thread.unwatch(socket.get());
    }
    platform::call(onRefused, reason);
}

} // namespace proc
