// The helper's connection to the session bus: hears notices and shows notifications. Lives without
// a bus as well, and looks for one again, ever more rarely, up to once a minute. One thread.
#pragma once

#include "helper/EventSource.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include <systemd/sd-bus.h>

namespace helper {

class SessionBus final : public EventSource
{
public:
    std::function<void(const std::string& name, const std::string& object)> onNotice;

    /// One line on what does not work.
    std::function<void(const std::string& problem)> onProblem;

    /// Connects now if there is no connection.
    void connect();

    /// Calls `then` once, from `wake`, after every notice that was sent before this call was heard;
    /// with no bus, or with one that does not answer, after a moment.
    void settle(std::function<void()> then);

    /// Shows a notification that stays until it is dismissed; later, when there is no bus now.
    void notify(const std::string& title, const std::string& text);

    pollfd awaited() const override;
    std::optional<Clock::time_point> deadline() const override;
    void wake() override;

private:
    struct Close
    {
        void operator()(sd_bus* bus) const { ::sd_bus_close_unref(bus); }

        void operator()(sd_bus_slot* slot) const { ::sd_bus_slot_unref(slot); }
    };

    // What waits until the daemon has answered a few questions.
    struct Settling
    {
        std::function<void()> then;
        Clock::time_point limit;
        int questions = 0;
        std::unique_ptr<sd_bus_slot, Close> answer;
    };

    struct Notification
    {
        std::string title;
        std::string text;
    };

    static int heard(sd_bus_message* message, void* self, sd_bus_error* error);
    static int listening(sd_bus_message* message, void* self, sd_bus_error* error);
    static int answered(sd_bus_message* message, void* self, sd_bus_error* error);
    static int shown(sd_bus_message* message, void* self, sd_bus_error* error);

    void process();
    bool ask();
    void show();
    void finishSettling();
    void disconnect();
    void report(const std::string& problem) const;

    std::unique_ptr<sd_bus, Close> bus;
    std::optional<Clock::time_point> nextTry;
    std::chrono::seconds pause{1};
    std::optional<Settling> settling;
    std::optional<Notification> pending;
};

} // namespace helper
