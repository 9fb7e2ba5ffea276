#include "linux/session/InstanceServer.h"

#include "linux/session/LocalSocket.h"
#include "linux/session/SessionMessage.h"

#include <sys/epoll.h>

namespace session {

namespace {

// Far more than the one helper and a few second starts at a time.
constexpr std::size_t MOST_PEERS = 32;

bool follow(
    const descriptors::FileDescriptor& interest, const descriptors::FileDescriptor& followed
)
{
    epoll_event event = {};
    event.events = EPOLLIN;
    return ::epoll_ctl(interest.get(), EPOLL_CTL_ADD, followed.get(), &event) == 0;
}

} // namespace

InstanceServer::InstanceServer(descriptors::FileDescriptor listener)
    : owner(::getpid()),
      listener(std::move(listener)),
      interest(::epoll_create1(EPOLL_CLOEXEC))
{
    follow(interest, this->listener);
}

int InstanceServer::receive()
{
    const std::lock_guard lock(guard);
    int activations = 0;
    admit();
    std::erase_if(peers, [&activations](const descriptors::FileDescriptor& peer) {
        return !serve(peer, activations);
    });
    return activations;
}

void InstanceServer::sendExit(int status)
{
    if (::getpid() != owner) {
        return;
    }
    const std::lock_guard lock(guard);
    admit();
    for (const descriptors::FileDescriptor& peer : peers) {
        sendMessage(peer, exitMessage(status));
    }
}

void InstanceServer::admit()
{
    for (descriptors::FileDescriptor peer = acceptFrom(listener); peer.isOpen();
         peer = acceptFrom(listener)) {
        const std::optional<Peer> facts = peerOf(peer);
        const bool isOwnUser = facts.has_value() && facts->user == ::geteuid();
        if (!isOwnUser || !follow(interest, peer)) {
            continue;
        }
        if (peers.size() == MOST_PEERS) {
            peers.erase(peers.begin()); // who came last is being waited for
        }
        peers.push_back(std::move(peer));
    }
}

// False when the peer has gone.
bool InstanceServer::serve(const descriptors::FileDescriptor& peer, int& activations)
{
    const std::optional<std::string> message = receiveMessage(peer);
    if (!message.has_value()) {
        return true;
    }
    if (*message == ACTIVATE) {
        ++activations;
        sendMessage(peer, ACTIVATED);
    }
    return !message->empty();
}

} // namespace session
