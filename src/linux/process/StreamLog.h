// The log on the two standard streams. Any thread may call; a line leaves in one write, a very long
// one in several. A stream that is closed, broken or not read for 50 ms loses the line; one that is
// not read is not waited for again until it takes bytes. The process has to ignore SIGPIPE.
#pragma once

#include "platform/Log.h"

#include <mutex>

#include <unistd.h>

namespace process {

class StreamLog final : public platform::Log
{
public:
    /// A descriptor that is not open is bound to /dev/null, so that nothing opened later ends up
    /// under its number: make the log before anything else.
    explicit StreamLog(int outputDescriptor = STDOUT_FILENO, int errorDescriptor = STDERR_FILENO);

    void line(std::string_view text) override;
    void diagnostic(std::string_view text) override;

private:
    struct Stream
    {
        int descriptor = -1;
        bool isStuck = false; // it took nothing when it was last waited for
    };

    void write(Stream& stream, std::string_view text);

    Stream output;
    Stream error;
    std::mutex mutex;
};

} // namespace process
