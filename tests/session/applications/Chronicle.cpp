#include "session/applications/Chronicle.h"

#include "desktop/Failure.h"

#include <algorithm>
#include <array>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <unistd.h>

namespace applications {

Chronicle::Chronicle(const std::string& display, const std::filesystem::path& output)
    : connection(display),
      changes(inotify_init1(IN_CLOEXEC | IN_NONBLOCK)),
      stop(eventfd(0, EFD_CLOEXEC)),
      output(open(output.c_str(), O_RDONLY | O_CLOEXEC))
{
    if (stop < 0 || this->output < 0 || inotify_add_watch(changes, output.c_str(), IN_MODIFY) < 0) {
        throw desktop::Failure("the agent's output cannot be followed");
    }
    lseek(this->output, 0, SEEK_END); // what was said before is of no interest
    const std::array<std::uint32_t, 1> mask{XCB_EVENT_MASK_PROPERTY_CHANGE};
    xcb_change_window_attributes(
        connection.get(), connection.root(), XCB_CW_EVENT_MASK, mask.data()
    );
    connection.sync();
    known = connection.property(connection.root(), "_NET_CLIENT_LIST");
    splash = connection.atom("_NET_WM_WINDOW_TYPE_SPLASH");
    thread = std::thread([this] { run(); });
}

Chronicle::~Chronicle()
{
    eventfd_write(stop, 1);
    thread.join();
    close(output);
    close(stop);
    close(changes);
}

void Chronicle::run()
{
    for (;;) {
        std::array<pollfd, 3> ready{
            pollfd{stop, POLLIN, 0},
            pollfd{changes, POLLIN, 0},
            pollfd{xcb_get_file_descriptor(connection.get()), POLLIN, 0}};
        poll(ready.data(), ready.size(), -1);
        if (ready[0].revents != 0 || xcb_connection_has_error(connection.get()) != 0) {
            return;
        }
        if (ready[1].revents != 0) {
            readLines();
        }
        if (ready[2].revents != 0) {
            takeEvents();
        }
    }
}

void Chronicle::readLines()
{
    std::array<char, 4096> buffer{};
    while (read(changes, buffer.data(), buffer.size()) > 0) {
    }
    ssize_t size = 0;
    while ((size = read(output, buffer.data(), buffer.size())) > 0) {
        unfinished.append(buffer.data(), static_cast<std::size_t>(size));
    }
    const std::scoped_lock lock(mutex);
    for (std::size_t end = 0; (end = unfinished.find('\n')) != std::string::npos;) {
        lines.push_back({Clock::now(), unfinished.substr(0, end)});
        unfinished.erase(0, end + 1);
    }
}

/// Until there is none: what comes while the server is asked is taken in with the answers, and the
/// descriptor says nothing of it any more.
void Chronicle::takeEvents()
{
    bool any = true;
    while (any) {
        any = false;
        while (desktop::Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection.get())}) {
            any = true;
        }
        if (any) {
            readWindows();
        }
    }
}

/// A window manager with much to do lists windows of programs that have ended already. A picture
/// that an application shows while it starts is none of its windows yet.
bool Chronicle::counts(xcb_window_t window)
{
    const auto question = xcb_get_window_attributes(connection.get(), window);
    const bool there = desktop::Reply<xcb_get_window_attributes_reply_t>(
                           xcb_get_window_attributes_reply(connection.get(), question, nullptr)
                       ) != nullptr;
    const auto types = connection.property(window, "_NET_WM_WINDOW_TYPE");
    return there && (types.empty() || types.front() != splash);
}

void Chronicle::readWindows()
{
    std::vector<std::uint32_t> current = connection.property(connection.root(), "_NET_CLIENT_LIST");
    std::erase_if(current, [this](std::uint32_t window) { return !counts(window); });
    readLines(); // the agent's word first: where both are there it was no later
    const std::scoped_lock lock(mutex);
    const bool added = std::any_of(current.begin(), current.end(), [this](std::uint32_t window) {
        return std::find(known.begin(), known.end(), window) == known.end();
    });
    known = std::move(current);
    if (added) {
        windows.push_back(Clock::now());
    }
}

void Chronicle::turnPage()
{
    const std::scoped_lock lock(mutex);
    lines.clear();
    windows.clear();
    known.clear();
    turned = Clock::now();
}

std::size_t Chronicle::countOf(const std::string& line) const
{
    const std::scoped_lock lock(mutex);
    return static_cast<std::size_t>(std::count_if(
        lines.begin(), lines.end(), [&](const Line& entry) { return entry.text == line; }
    ));
}

std::size_t Chronicle::countOfAll(const std::string& beginning) const
{
    const std::scoped_lock lock(mutex);
    return static_cast<std::size_t>(std::count_if(
        lines.begin(),
        lines.end(),
        [&](const Line& entry) { return entry.text.starts_with(beginning); }
    ));
}

std::optional<Chronicle::Clock::time_point> Chronicle::firstLine(const std::string& line) const
{
    const std::scoped_lock lock(mutex);
    const auto found = std::find_if(lines.begin(), lines.end(), [&](const Line& entry) {
        return entry.text == line;
    });
    return found == lines.end() ? std::nullopt : std::optional(found->time);
}

std::optional<Chronicle::Clock::time_point> Chronicle::firstWindow() const
{
    const std::scoped_lock lock(mutex);
    return windows.empty() ? std::nullopt : std::optional(windows.front());
}

std::string Chronicle::text() const
{
    const std::scoped_lock lock(mutex);
    std::vector<Line> all = lines;
    for (const Clock::time_point time : windows) {
        all.push_back({time, "(a window)"});
    }
    std::stable_sort(all.begin(), all.end(), [](const Line& left, const Line& right) {
        return left.time < right.time;
    });
    std::string result;
    for (const Line& line : all) {
        const auto since = std::chrono::floor<std::chrono::milliseconds>(line.time - turned);
        result += (result.empty() ? "" : ", ") + line.text + " after " +
                  std::to_string(since.count()) + " ms";
    }
    return result;
}

} // namespace applications
