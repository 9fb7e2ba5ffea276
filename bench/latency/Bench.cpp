#include "latency/Bench.h"

#include "desktop/Failure.h"
#include "desktop/TemporaryFolder.h"
#include "desktop/Wait.h"
#include "desktop/WindowManager.h"

#include <csignal>
#include <iostream>
#include <thread>

namespace latency {

using namespace std::chrono_literals;
using desktop::Clock;

namespace {

constexpr auto LOCK_HEX = "41444b";
constexpr auto LOOK_INTERVAL = 100us;
constexpr auto AFTER_ALL_IS_SEEN = 200ms;
constexpr auto LONGEST_RUN = 15s;

desktop::Desktop::Parts parts()
{
    desktop::Desktop::Parts wanted;
    wanted.windowManager = false; // started when it has its configuration
    wanted.framebuffer = true;
    return wanted;
}

/// Everything on the second screen, away from the controls of the lock.
constexpr auto WINDOW_MANAGER_CONFIGURATION =
    R"(<openbox_config xmlns="http://openbox.org/3.4/rc"><applications><application class="*">
<position force="yes"><x>100</x><y>100</y><monitor>2</monitor></position><focus>yes</focus>
</application></applications></openbox_config>
)";

double millisecondsSince(Clock::time_point start, Clock::time_point end = Clock::now())
{
    return std::chrono::duration<double, std::milli>(end - start).count();
}

} // namespace

Bench::Bench()
    : session(parts()),
      programs(
          {{{"xterm"}, false, {"xterm", {}}},
           {{"mousepad"}, false, {"mousepad", {}}},
           {{INSTANT_CLIENT}, false, {"instant client", {}}},
           {{"i3lock", "-n", "-c", LOCK_HEX}, true, {"i3lock", {}}}}
      ),
      screens(session.desk),
      maps(session.desk.server().displayName())
{
    prepareDesktop();
    session.protect({"debian-xterm", "org.xfce.mousepad", "instant"});
    if (!session.startAndWait()) {
        throw desktop::Failure("the agent does not watch applications\n" + session.report());
    }
    screens.remember();
}

void Bench::prepareDesktop()
{
    desktop::writeFile(
        session.desk.home() / ".config/openbox/rc.xml", WINDOW_MANAGER_CONFIGURATION
    );
    desktop::writeFile(
        session.desk.home() / ".local/share/applications/instant.desktop",
        std::string("[Desktop Entry]\nType=Application\nName=Instant\nExec=") + INSTANT_CLIENT +
            "\n"
    );
    session.desk.startWindowManager();
}

void Bench::measure(int runs)
{
    for (int round = 0; round < runs; ++round) {
        for (Program& program : programs) {
            program.figures.runs.push_back(start(program));
        }
    }
}

Run Bench::start(const Program& program)
{
    maps.reset();
    Run run;
    const auto start = Clock::now();
    desktop::ChildProcess process = session.desk.start(program.command);
    watch(program, start, run);
    process.signal(SIGKILL);
    process.waitForEnd(agent::PATIENCE);
    if (!desktop::waitUntil([this] { return screens.areAsBefore(); }, agent::PATIENCE)) {
        throw desktop::Failure("the screens stay covered\n" + session.report());
    }
    return run;
}

void Bench::watch(const Program& program, Clock::time_point start, Run& run)
{
    auto end = start + LONGEST_RUN;
    bool complete = false;
    while (Clock::now() < end) {
        if (!run.covered.has_value() && screens.areCovered()) {
            run.covered = millisecondsSince(start);
        }
        if (!program.isLocker) {
            run.seen = run.seen || screens.showSomethingElse();
        }
        const auto mapped = maps.look();
        if (mapped.has_value() && !run.mapped.has_value()) {
            run.mapped = millisecondsSince(start, *mapped);
        }
        if (!complete && run.covered.has_value() && (run.mapped.has_value() || program.isLocker)) {
            complete = true;
            end = Clock::now() + AFTER_ALL_IS_SEEN;
        }
        std::this_thread::sleep_for(LOOK_INTERVAL);
    }
}

double Bench::reference() const
{
    for (const Program& program : programs) {
        const std::vector<double> times = program.figures.coverTimes();
        if (program.isLocker && !times.empty()) {
            return percentile(times, 50);
        }
    }
    return 0;
}

void Bench::print() const
{
    std::cout << tableHead() << '\n';
    for (const Program& program : programs) {
        std::cout << program.figures.row(reference()) << '\n';
    }
    std::cout << std::flush;
}

} // namespace latency
