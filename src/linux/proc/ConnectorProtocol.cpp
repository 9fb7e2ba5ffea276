#include "linux/proc/ConnectorProtocol.h"

#include <cstring>

#include <arpa/inet.h>
#include <linux/cn_proc.h>
#include <linux/connector.h>
#include <linux/netlink.h>
#include <unistd.h>

namespace proc {

namespace {

constexpr std::size_t CONNECTOR_OFFSET = NLMSG_HDRLEN;
constexpr std::size_t EVENT_OFFSET = CONNECTOR_OFFSET + sizeof(cn_msg);

template <typename Value> void append(std::vector<std::byte>& bytes, const Value& value)
{
    const std::size_t end = bytes.size();
    bytes.resize(end + sizeof value);
    std::memcpy(bytes.data() + end, &value, sizeof value);
}

template <typename Value> Value valueAt(std::span<const std::byte> bytes, std::size_t offset)
{
    Value value{};
    std::memcpy(&value, bytes.data() + offset, sizeof value);
    return value;
}

/// `message` is long enough for an event.
void appendEvent(
    std::vector<ConnectorEvent>& events, std::span<const std::byte> message, std::uint32_t token
)
{
    const auto header = valueAt<cn_msg>(message, CONNECTOR_OFFSET);
    if (header.id.idx != CN_IDX_PROC || header.id.val != CN_VAL_PROC) {
        return;
    }
    const auto event = valueAt<proc_event>(message, EVENT_OFFSET);
    if (event.what == proc_event::PROC_EVENT_NONE && header.ack == token + 1) {
        events.push_back({ConnectorEvent::Kind::Answer, 0, event.event_data.ack.err});
    } else if (event.what == proc_event::PROC_EVENT_EXEC) {
        events.push_back({ConnectorEvent::Kind::Exec, event.event_data.exec.process_tgid, 0});
    }
}

} // namespace

std::vector<std::byte> listenRequest(std::uint32_t token)
{
    const auto operation = static_cast<std::uint32_t>(PROC_CN_MCAST_LISTEN);
    nlmsghdr message{};
    message.nlmsg_len = static_cast<std::uint32_t>(EVENT_OFFSET + sizeof operation);
    message.nlmsg_type = NLMSG_DONE;
    cn_msg header{};
    header.id = {CN_IDX_PROC, CN_VAL_PROC};
    header.ack = token; // comes back raised by one; the sequence number is the kernel's own
    header.len = sizeof operation;
    std::vector<std::byte> bytes;
    append(bytes, message);
    append(bytes, header);
    append(bytes, operation);
    return bytes;
}

std::vector<ConnectorEvent>
parseConnectorMessages(std::span<const std::byte> datagram, std::uint32_t token)
{
    std::vector<ConnectorEvent> events;
    while (datagram.size() >= EVENT_OFFSET + sizeof(proc_event)) {
        const std::size_t length = valueAt<nlmsghdr>(datagram, 0).nlmsg_len;
        if (length < EVENT_OFFSET + sizeof(proc_event) || length > datagram.size()) {
            break;
        }
        appendEvent(events, datagram.first(length), token);
        const std::size_t next = NLMSG_ALIGN(length);
        datagram = next < datagram.size() ? datagram.subspan(next) : datagram.subspan(length, 0);
    }
    return events;
}

std::vector<sock_filter> connectorFilter()
{
    constexpr std::uint32_t WHOLE = 0xFFFFFFFF;
    const auto what = static_cast<std::uint32_t>(EVENT_OFFSET + offsetof(proc_event, what));
    // Words are loaded as if in network order.
    const std::uint32_t answer = htonl(proc_event::PROC_EVENT_NONE);
    const std::uint32_t exec = htonl(proc_event::PROC_EVENT_EXEC);
    return {
        {BPF_LD | BPF_W | BPF_ABS, 0, 0, what},
        {BPF_JMP | BPF_JEQ | BPF_K, 2, 0, answer},
        {BPF_JMP | BPF_JEQ | BPF_K, 1, 0, exec},
        {BPF_RET | BPF_K, 0, 0, 0},
        {BPF_RET | BPF_K, 0, 0, WHOLE},
    };
}

} // namespace proc
