#include "helper/SessionBus.h"

#include "helper/TerminationNotice.h"
#include "linux/descriptors/ErrorText.h"
#include "linux/session/Notice.h"
#include "linux/session/Programs.h"
#include "platform/Call.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace helper {

namespace {

constexpr std::chrono::seconds FIRST_PAUSE(1);
constexpr std::chrono::seconds LONGEST_PAUSE(60);

// A daemon reads from all of its clients in turn: by its second answer it has read what was there
// before the first question.
constexpr int QUESTIONS = 2;
constexpr std::chrono::milliseconds PATIENCE(200);

constexpr std::uint8_t CRITICAL = 2;
constexpr std::int32_t UNTIL_DISMISSED = 0;

std::string matchRule()
{
    return std::string("type='signal',interface='") + session::NOTICE_INTERFACE + "',member='" +
           session::NOTICE_MEMBER + "',arg0='" + std::string(TerminationNotice::NAME) + "'";
}

} // namespace

void SessionBus::connect()
{
    if (bus != nullptr) {
        return;
    }
    sd_bus* opened = nullptr;
    int result = ::sd_bus_open_user(&opened);
    bus.reset(opened);
    if (result >= 0) {
        result = ::sd_bus_add_match_async(
            opened, nullptr, matchRule().c_str(), &SessionBus::heard, &SessionBus::listening, this
        );
    }
    if (result >= 0) {
        nextTry.reset();
        show();
        return;
    }
    if (!nextTry.has_value()) {
        report("no session bus, so no notice is heard: " + descriptors::errorText(-result));
    }
    disconnect();
}

void SessionBus::settle(std::function<void()> then)
{
    settling = Settling{std::move(then), Clock::now() + PATIENCE, 0, nullptr};
    if (!ask()) {
        settling->limit = Clock::now();
    }
}

void SessionBus::notify(const std::string& title, const std::string& text)
{
    pending = Notification{title, text};
    connect();
    show();
}

pollfd SessionBus::awaited() const
{
    if (bus == nullptr) {
        return {-1, 0, 0};
    }
    const int events = ::sd_bus_get_events(bus.get());
    return {::sd_bus_get_fd(bus.get()), static_cast<short>(std::max(events, 0)), 0};
}

std::optional<Clock::time_point> SessionBus::deadline() const
{
    if (bus == nullptr) {
        return settling.has_value() ? settling->limit : nextTry;
    }
    // Never is the largest value that the library gives.
    std::uint64_t moment = UINT64_MAX;
    ::sd_bus_get_timeout(bus.get(), &moment);
    const std::chrono::microseconds limit(std::min<std::uint64_t>(moment, INT64_MAX / 1000));
    const Clock::time_point due(limit);
    return settling.has_value() ? std::min(due, settling->limit) : due;
}

void SessionBus::wake()
{
    const Clock::time_point now = Clock::now();
    if (bus != nullptr) {
        // First, so that a moment that is over does not hide a notice that has come.
        process();
    } else if (nextTry.has_value() && *nextTry <= now) {
        pause = std::min(2 * pause, LONGEST_PAUSE);
        connect();
    }
    if (settling.has_value() && settling->limit <= now) {
        finishSettling();
    }
}

void SessionBus::process()
{
    int result = 0;
    do {
        result = ::sd_bus_process(bus.get(), nullptr);
    } while (result > 0);
    if (result < 0) {
        report("the session bus is gone: " + descriptors::errorText(-result));
        disconnect();
    }
}

int SessionBus::heard(sd_bus_message* message, void* self, sd_bus_error* /*error*/)
{
    const char* name = nullptr;
    const char* object = nullptr;
    if (::sd_bus_message_read(message, "ss", &name, &object) > 0) {
        platform::call(static_cast<SessionBus*>(self)->onNotice, name, object);
    }
    return 0;
}

int SessionBus::listening(sd_bus_message* message, void* self, sd_bus_error* /*error*/)
{
    auto* bus = static_cast<SessionBus*>(self);
    if (::sd_bus_message_is_method_error(message, nullptr) != 0) {
        bus->report("the session bus refuses to pass on notices");
    } else {
        bus->pause = FIRST_PAUSE;
    }
    return 0;
}

int SessionBus::answered(sd_bus_message* message, void* self, sd_bus_error* /*error*/)
{
    auto* bus = static_cast<SessionBus*>(self);
    const bool failed = ::sd_bus_message_is_method_error(message, nullptr) != 0;
    if (failed || bus->settling->questions == QUESTIONS || !bus->ask()) {
        bus->finishSettling();
    }
    return 0;
}

int SessionBus::shown(sd_bus_message* message, void* self, sd_bus_error* /*error*/)
{
    const sd_bus_error* error = ::sd_bus_message_get_error(message);
    if (error != nullptr) {
        const std::string reason = error->message != nullptr ? error->message : error->name;
        static_cast<SessionBus*>(self)->report("cannot show a notification: " + reason);
    }
    return 0;
}

bool SessionBus::ask()
{
    if (bus == nullptr) {
        return false;
    }
    ++settling->questions;
    sd_bus_slot* slot = nullptr;
    const int result = ::sd_bus_call_method_async(
        bus.get(),
        &slot,
        "org.freedesktop.DBus",
        "/org/freedesktop/DBus",
        "org.freedesktop.DBus",
        "GetId",
        &SessionBus::answered,
        this,
        nullptr
    );
    settling->answer.reset(slot);
    return result >= 0;
}

void SessionBus::show()
{
    if (bus == nullptr || !pending.has_value()) {
        return;
    }
    const int result = ::sd_bus_call_method_async(
        bus.get(),
        nullptr,
        "org.freedesktop.Notifications",
        "/org/freedesktop/Notifications",
        "org.freedesktop.Notifications",
        "Notify",
        &SessionBus::shown,
        this,
        "susssasa{sv}i",
        session::AGENT,
        0U,
        session::IDENTIFIER,
        pending->title.c_str(),
        pending->text.c_str(),
        0U,
        1U,
        "urgency",
        "y",
        CRITICAL,
        UNTIL_DISMISSED
    );
    if (result >= 0) {
        pending.reset();
    }
}

void SessionBus::finishSettling()
{
    const std::optional<Settling> done = std::exchange(settling, std::nullopt);
    if (done.has_value()) {
        done->then();
    }
}

void SessionBus::disconnect()
{
    bus.reset();
    nextTry = Clock::now() + pause;
    if (settling.has_value()) {
        settling->limit = Clock::now();
    }
}

void SessionBus::report(const std::string& problem) const
{
    platform::call(onProblem, problem);
}

} // namespace helper
