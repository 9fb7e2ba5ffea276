// The messages of the kernel's process connector, as pure functions over bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include <linux/filter.h>
#include <sys/types.h>

namespace proc {

struct ConnectorEvent
{
    enum class Kind
    {
        Answer, // to our own request; `error` is 0 where it was granted
        Exec,
    };

    Kind kind = Kind::Exec;
    pid_t pid = 0;
    std::uint32_t error = 0;

    friend bool operator==(const ConnectorEvent&, const ConnectorEvent&) = default;
};

/// Asks to be told about processes. The kernel's answer carries `token`, the answers to other
/// listeners carry theirs.
std::vector<std::byte> listenRequest(std::uint32_t token);

/// The events of one datagram; what is malformed or of no interest is left out.
std::vector<ConnectorEvent>
parseConnectorMessages(std::span<const std::byte> datagram, std::uint32_t token);

/// A filter for the socket that drops in the kernel whatever `parseConnectorMessages` would.
std::vector<sock_filter> connectorFilter();

} // namespace proc
