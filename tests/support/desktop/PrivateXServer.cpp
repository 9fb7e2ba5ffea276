#include "desktop/PrivateXServer.h"

#include "desktop/Failure.h"
#include "desktop/Monitors.h"

#include <array>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace desktop {

namespace {

constexpr int START_TIMEOUT_MS = 20000;

class Pipe
{
public:
    Pipe()
    {
        if (pipe2(ends.data(), O_CLOEXEC) != 0) {
            throw Failure("no pipe");
        }
    }

    ~Pipe()
    {
        close(ends[0]);
        closeWriting();
    }

    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    Pipe(Pipe&&) = delete;
    Pipe& operator=(Pipe&&) = delete;

    [[nodiscard]] int reading() const { return ends[0]; }

    [[nodiscard]] int writing() const { return ends[1]; }

    void closeWriting()
    {
        if (ends[1] >= 0) {
            close(ends[1]);
            ends[1] = -1;
        }
    }

private:
    std::array<int, 2> ends = {-1, -1};
};

/// What the server writes, once it takes clients, on the descriptor given with -displayfd.
std::string displayNumberFrom(int descriptor)
{
    std::string number;
    while (number.find('\n') == std::string::npos) {
        pollfd ready{descriptor, POLLIN, 0};
        std::array<char, 16> text{};
        if (poll(&ready, 1, START_TIMEOUT_MS) <= 0) {
            throw Failure("the X server does not come up");
        }
        const ssize_t size = read(descriptor, text.data(), text.size());
        if (size <= 0) {
            throw Failure("the X server ended while it came up");
        }
        number.append(text.data(), static_cast<std::size_t>(size));
    }
    number.resize(number.find('\n'));
    return number;
}

std::vector<std::string> commandFor(
    int report,
    const std::filesystem::path& framebufferFolder,
    const std::vector<std::string>& options
)
{
    const std::string largest = std::to_string(PrivateXServer::LARGEST_WIDTH) + "x" +
                                std::to_string(PrivateXServer::LARGEST_HEIGHT) + "x24";
    std::vector<std::string> command = {"Xvfb", "-displayfd", std::to_string(report)};
    command.insert(command.end(), {"-screen", "0", largest, "-nolisten", "tcp", "-noreset"});
    if (!framebufferFolder.empty()) {
        command.insert(command.end(), {"-fbdir", framebufferFolder.string()});
    }
    command.insert(command.end(), options.begin(), options.end());
    return command;
}

} // namespace

std::vector<Rectangle> PrivateXServer::twoScreens()
{
    return {{0, 0, 1280, 720}, {1280, 0, 1280, 720}};
}

PrivateXServer::PrivateXServer(
    const std::vector<Rectangle>& screens,
    const Environment& environment,
    const std::filesystem::path& framebufferFolder,
    const std::vector<std::string>& options
)
{
    Pipe report;
    server = std::make_unique<ChildProcess>(ChildProcess::Command{
        .arguments = commandFor(report.writing(), framebufferFolder, options),
        .environment = environment,
        .inheritedDescriptors = {report.writing()},
    });
    report.closeWriting();
    name = ":" + displayNumberFrom(report.reading());
    client = std::make_unique<XConnection>(name);
    setScreens(screens);
}

void PrivateXServer::setScreens(const std::vector<Rectangle>& screens)
{
    arrangeMonitors(*client, screens);
    monitors = screens;
}

} // namespace desktop
