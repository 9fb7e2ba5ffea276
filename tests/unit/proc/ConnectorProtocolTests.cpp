#include "linux/proc/ConnectorProtocol.h"

#include <array>
#include <cstring>

#include <gtest/gtest.h>
#include <linux/cn_proc.h>
#include <linux/connector.h>
#include <linux/netlink.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr std::uint32_t TOKEN = 77;

std::vector<std::byte> message(const proc_event& event, std::uint32_t token = 0)
{
    nlmsghdr header{};
    header.nlmsg_len = NLMSG_HDRLEN + sizeof(cn_msg) + sizeof event;
    cn_msg connector{};
    connector.id = {CN_IDX_PROC, CN_VAL_PROC};
    connector.seq = 4711;
    connector.ack = token;
    connector.len = sizeof event;
    std::vector<std::byte> bytes(header.nlmsg_len);
    std::memcpy(bytes.data(), &header, sizeof header);
    std::memcpy(bytes.data() + NLMSG_HDRLEN, &connector, sizeof connector);
    std::memcpy(bytes.data() + NLMSG_HDRLEN + sizeof connector, &event, sizeof event);
    return bytes;
}

proc_event event(decltype(proc_event::what) what, pid_t thread = 0, pid_t process = 0)
{
    proc_event result{};
    result.what = what;
    result.event_data.exec.process_pid = thread;
    result.event_data.exec.process_tgid = process;
    return result;
}

proc_event answer(std::uint32_t error)
{
    proc_event result{};
    result.what = proc_event::PROC_EVENT_NONE;
    result.event_data.ack.err = error;
    return result;
}

using Events = std::vector<proc::ConnectorEvent>;
using Kind = proc::ConnectorEvent::Kind;

} // namespace

TEST(ConnectorProtocol, ExecNamesTheProcessAndNotTheThread)
{
    const auto bytes = message(event(proc_event::PROC_EVENT_EXEC, 11, 10));

    EXPECT_EQ(proc::parseConnectorMessages(bytes, TOKEN), (Events{{Kind::Exec, 10, 0}}));
}

TEST(ConnectorProtocol, AnswerCarriesTheError)
{
    EXPECT_EQ(
        proc::parseConnectorMessages(message(answer(1), TOKEN + 1), TOKEN),
        (Events{{Kind::Answer, 0, 1}})
    );
}

TEST(ConnectorProtocol, AnswerToAnotherListenerIsLeftOut)
{
    EXPECT_TRUE(proc::parseConnectorMessages(message(answer(0), TOKEN + 2), TOKEN).empty());
}

TEST(ConnectorProtocol, OtherEventsAreLeftOut)
{
    for (const auto what : {proc_event::PROC_EVENT_FORK, proc_event::PROC_EVENT_EXIT}) {
        EXPECT_TRUE(proc::parseConnectorMessages(message(event(what, 5, 5)), TOKEN).empty());
    }
}

TEST(ConnectorProtocol, SeveralMessagesInOneDatagramAreAllRead)
{
    auto bytes = message(event(proc_event::PROC_EVENT_EXEC, 1, 1));
    const auto second = message(event(proc_event::PROC_EVENT_EXEC, 2, 2));
    bytes.insert(bytes.end(), second.begin(), second.end());

    EXPECT_EQ(
        proc::parseConnectorMessages(bytes, TOKEN), (Events{{Kind::Exec, 1, 0}, {Kind::Exec, 2, 0}})
    );
}

TEST(ConnectorProtocol, EveryTruncationIsLeftOut)
{
    const auto bytes = message(event(proc_event::PROC_EVENT_EXEC, 1, 1));

    for (std::size_t size = 0; size < bytes.size(); ++size) {
        EXPECT_TRUE(proc::parseConnectorMessages(std::span(bytes).first(size), TOKEN).empty());
    }
}

TEST(ConnectorProtocol, LengthsThatLieAreLeftOut)
{
    for (const std::uint32_t length : {0U, 1U, 16U, 40U, 1000U, 0xFFFFFFFFU}) {
        auto bytes = message(event(proc_event::PROC_EVENT_EXEC, 1, 1));
        std::memcpy(bytes.data(), &length, sizeof length);

        EXPECT_TRUE(proc::parseConnectorMessages(bytes, TOKEN).empty()) << length;
    }
}

namespace {

/// A pair of sockets, of which the second one has the filter.
class FilteredPair
{
public:
    FilteredPair()
    {
        ::socketpair(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK, 0, ends.data());
        std::vector<sock_filter> filter = proc::connectorFilter();
        const sock_fprog program{static_cast<unsigned short>(filter.size()), filter.data()};
        filtered =
            ::setsockopt(ends[1], SOL_SOCKET, SO_ATTACH_FILTER, &program, sizeof program) == 0;
    }

    FilteredPair(const FilteredPair&) = delete;
    FilteredPair& operator=(const FilteredPair&) = delete;
    FilteredPair(FilteredPair&&) = delete;
    FilteredPair& operator=(FilteredPair&&) = delete;

    ~FilteredPair()
    {
        ::close(ends[0]);
        ::close(ends[1]);
    }

    void send(const std::vector<std::byte>& bytes) const
    {
        [[maybe_unused]] const ssize_t size = ::send(ends[0], bytes.data(), bytes.size(), 0);
    }

    /// The events of the next datagram; nothing when no more came through.
    [[nodiscard]] Events receive() const
    {
        std::array<std::byte, 512> buffer{};
        const ssize_t size = ::recv(ends[1], buffer.data(), buffer.size(), 0);
        return size <= 0 ? Events()
                         : proc::parseConnectorMessages(
                               std::span(buffer).first(static_cast<std::size_t>(size)), TOKEN
                           );
    }

    bool filtered = false;

private:
    std::array<int, 2> ends{};
};

} // namespace

TEST(ConnectorProtocol, FilterLetsAnswersAndExecsThroughOnly)
{
    const FilteredPair sockets;
    ASSERT_TRUE(sockets.filtered);

    sockets.send(message(event(proc_event::PROC_EVENT_FORK, 1, 1)));
    sockets.send(message(event(proc_event::PROC_EVENT_EXEC, 2, 2)));
    sockets.send(message(event(proc_event::PROC_EVENT_COMM, 3, 3)));
    sockets.send(message(event(proc_event::PROC_EVENT_EXIT, 4, 4)));
    sockets.send(message(answer(0), TOKEN + 1));

    EXPECT_EQ(sockets.receive(), (Events{{Kind::Exec, 2, 0}}));
    EXPECT_EQ(sockets.receive(), (Events{{Kind::Answer, 0, 0}}));
    EXPECT_EQ(sockets.receive(), Events());
}
