// Holds every keyboard and every pointer of the session for this connection, from `begin` to `end`.
// A grab counts only when the server said so; what another program holds is tried again and again,
// and a few synthetic Escapes close the menus that may hold it. Who still holds it after these is
// no menu and is left alone, until the keyboard was held here and lost again. Held grabs are asked
// for again, since they can be lost. One line is reported when the capture has been incomplete for
// a second, and one when it then came. Used by one thread.
#pragma once

#include "linux/x11/Connection.h"
#include "platform/Report.h"

#include <chrono>
#include <optional>
#include <vector>

#include <xcb/xinput.h>

namespace x11 {

class InputCapture
{
public:
    using Clock = std::chrono::steady_clock;

    /// Between two attempts while something is missing, and while it is expected back at any time.
    static constexpr std::chrono::milliseconds RETRY{100};
    static constexpr std::chrono::milliseconds IN_HASTE{10};
    /// Between two attempts while all is held, of which a loss is not announced.
    static constexpr std::chrono::milliseconds CONFIRMATION{500};
    /// Hints come in crowds, and one attempt serves them all.
    static constexpr std::chrono::milliseconds AFTER_HINT{10};
    /// How long something is missing before a line says so.
    static constexpr std::chrono::seconds PATIENCE{1};
    /// As long as a key may still be down that started the application.
    static constexpr std::chrono::milliseconds BEFORE_ESCAPE{100};
    /// A menu takes a while to close; after the early ones nobody is likely to listen.
    static constexpr std::chrono::milliseconds BETWEEN_ESCAPES{200};
    static constexpr std::chrono::seconds BETWEEN_LATER_ESCAPES{2};
    static constexpr int EARLY_ESCAPES = 4;
    static constexpr int MOST_ESCAPES = 8;
    /// After each Escape, and at first: one's own menus close at the sight of the lock.
    static constexpr std::chrono::milliseconds HASTE{100};

    InputCapture(const Connection& connection, platform::Report report);

    void begin(Clock::time_point now = Clock::now());
    void end();

    /// Everything is held, as far as the server told.
    bool complete() const { return active && keyboardsHeld && pointersHeld; }

    /// Somebody else holds what is wanted here.
    bool missing() const { return active && !complete(); }

    /// When `attempt` is due; nothing while there is no capture to hold.
    std::optional<Clock::time_point> due() const;
    void attempt(Clock::time_point now = Clock::now());

    /// Devices came or went.
    void devicesChanged();
    /// Something happened that may have taken a grab away or freed one.
    void hint();

private:
    struct Device
    {
        xcb_input_device_id_t identifier;
        bool keyboard;
    };

    void findDevices();
    void grabAll();
    void noteResult(Clock::time_point now);
    void askToLetGo(Clock::time_point now);
    void reportResult(Clock::time_point now);
    void pressEscape() const;

    const Connection& connection;
    platform::Report report;
    std::vector<Device> devices;
    bool active = false;
    bool keyboardsHeld = false;
    bool pointersHeld = false;
    bool wasMissing = false;
    bool keyboardsWereHeld = false; // at the last attempt
    int escapes = 0;                // since the keyboard was last lost
    bool reportedMissing = false;
    Clock::time_point lastAttempt;
    Clock::time_point nextAttempt;
    Clock::time_point missingSince;
    Clock::time_point nextEscape;
    Clock::time_point hasteUntil;
};

} // namespace x11
