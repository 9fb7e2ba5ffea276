// Datagrams of the kernel's process connector.
#include "fuzz/Fuzz.h"
#include "linux/proc/ConnectorProtocol.h"

#include <span>

void fuzz(std::string_view bytes)
{
    constexpr std::uint32_t TOKEN = 7;
    const std::span all(bytes.data(), bytes.size());
    static_cast<void>(proc::parseConnectorMessages(std::as_bytes(all), TOKEN));
}
