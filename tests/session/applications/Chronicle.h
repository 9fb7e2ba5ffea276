// What the agent said and which windows came, pictures of a start aside, each with the moment in
// which it was seen, in the order in which it happened. A thread of its own writes it; any thread
// may read.
#pragma once

#include "desktop/XConnection.h"

#include <chrono>
#include <filesystem>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace applications {

class Chronicle
{
public:
    using Clock = std::chrono::steady_clock;

    /// Follows the agent's standard output in `output`, which is there already, and the list of the
    /// window manager. Throws `Failure`.
    Chronicle(const std::string& display, const std::filesystem::path& output);
    ~Chronicle();
    Chronicle(const Chronicle&) = delete;
    Chronicle& operator=(const Chronicle&) = delete;
    Chronicle(Chronicle&&) = delete;
    Chronicle& operator=(Chronicle&&) = delete;

    /// Begins anew: what was seen so far is forgotten. No window is there then, so that the next
    /// one is new even where it has the identifier of an earlier one.
    void turnPage();

    [[nodiscard]] std::size_t countOf(const std::string& line) const;

    /// Of lines that begin so.
    [[nodiscard]] std::size_t countOfAll(const std::string& beginning) const;

    /// When the line came first.
    [[nodiscard]] std::optional<Clock::time_point> firstLine(const std::string& line) const;

    /// When the first window came.
    [[nodiscard]] std::optional<Clock::time_point> firstWindow() const;

    /// All of this page, for a person.
    [[nodiscard]] std::string text() const;

private:
    struct Line
    {
        Clock::time_point time;
        std::string text;
    };

    void run();
    void readLines();
    void readWindows();
    bool counts(xcb_window_t window);
    void takeEvents();

    desktop::XConnection connection;
    xcb_atom_t splash = XCB_ATOM_NONE;
    int changes = -1; // of the output
    int stop = -1;
    int output = -1;
    std::string unfinished;
    mutable std::mutex mutex;
    std::vector<Line> lines; // guarded by the mutex, as are the next three
    std::vector<Clock::time_point> windows;
    std::vector<std::uint32_t> known; // of the window manager's list
    Clock::time_point turned = Clock::now();
    std::thread thread;
};

} // namespace applications
