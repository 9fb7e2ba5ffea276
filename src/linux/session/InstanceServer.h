// The side of the first instance: hears those that start a second one, and tells those that watch
// with which status this process ends. A process that is killed or crashes says nothing; its
// watchers see the connection close. Never waits for anybody. Any thread.
#pragma once

#include "linux/descriptors/FileDescriptor.h"

#include <mutex>
#include <vector>

#include <sys/types.h>

namespace session {

class InstanceServer
{
public:
    explicit InstanceServer(descriptors::FileDescriptor listener);

    /// Readable while `receive` has something to do.
    int fd() const { return interest.get(); }

    /// Lets in who waits and answers who asks; gives the number of activations asked for.
    int receive();

    /// Sends `status` to everybody who is connected or waits to be. Does nothing in a fork.
    void sendExit(int status);

private:
    void admit();
    static bool serve(const descriptors::FileDescriptor& peer, int& activations);

    const pid_t owner;
    std::mutex guard;
    descriptors::FileDescriptor listener;
    descriptors::FileDescriptor interest;
    std::vector<descriptors::FileDescriptor> peers;
};

} // namespace session
