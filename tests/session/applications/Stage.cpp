#include "session/applications/Stage.h"

#include "agent/Cover.h"
#include "desktop/Failure.h"
#include "desktop/SessionProcesses.h"
#include "desktop/TemporaryFolder.h"
#include "desktop/Wait.h"

#include <algorithm>
#include <csignal>
#include <filesystem>

namespace applications {

using namespace std::chrono_literals;

namespace {

constexpr std::chrono::milliseconds LONGEST_START = 40s;
constexpr std::chrono::milliseconds LONGEST_END = 20s;
constexpr std::chrono::milliseconds ORDERLY_END = 3s;

desktop::Desktop::Parts parts()
{
    desktop::Desktop::Parts result;
    result.screens = {{0, 0, 1280, 720}};
    result.services = "/usr/share/dbus-1/services";
    return result;
}

} // namespace

Stage::Stage(bool isProtected)
    : session(parts()),
      all(applications::applications(session.desk.home(), session.desk.server().displayName()))
{
    install();
    std::vector<std::string> identifiers;
    for (const Application& application : all) {
        identifiers.push_back(application.id);
    }
    session.protect(isProtected ? identifiers : std::vector<std::string>());
    if (!session.startAndWait()) {
        throw desktop::Failure("the agent does not come up: " + session.report());
    }
    // Its own helper starts, too, and is none of the applications.
    session.waitForLine("Did start: OlvoHelper");
    chronicle.emplace(session.desk.server().displayName(), session.desk.folder() / "agent.out");
}

/// What is only on this desktop.
void Stage::install()
{
    const std::filesystem::path home = session.desk.home();
    // Where some tell their second start from the first.
    session.desk.environment["TMPDIR"] = session.desk.folder().string();
    // Java asks the system for the user's home, not the environment.
    session.desk.environment["JAVA_TOOL_OPTIONS"] = "-Duser.home=" + home.string();
    for (const Application& application : all) {
        if (!application.entry.empty()) {
            const auto folder = home / ".local/share/applications";
            std::filesystem::create_directories(folder);
            desktop::writeFile(folder / (application.id + ".desktop"), application.entry);
        }
    }
    std::error_code missing;
    std::filesystem::copy_file("/usr/bin/galculator", home / "boxed-calculator", missing);
}

std::set<pid_t> Stage::strangers()
{
    std::set<pid_t> result;
    for (const pid_t process : desktop::descendants()) {
        if (!own.contains(process)) {
            result.insert(process);
        }
    }
    return result;
}

desktop::ChildProcess Stage::inShell(const std::string& command)
{
    return session.desk.start({"/bin/sh", "-c", command});
}

void Stage::launch(const Application& application, Way way)
{
    switch (way) {
    case Way::Entry: {
        const std::filesystem::path folder =
            application.entry.empty() ? std::filesystem::path("/usr/share/applications")
                                      : session.desk.home() / ".local/share/applications";
        children.push_back(
            session.desk.start({"gio", "launch", (folder / (application.id + ".desktop")).string()})
        );
        break;
    }
    case Way::Shell:
        children.push_back(inShell(application.command));
        break;
    case Way::Bus: {
        const std::vector<std::string>& call = application.busCall;
        std::vector<std::string> command{"gdbus", "call", "--session"};
        command.insert(command.end(), {"--dest", call.at(0), "--object-path", call.at(1)});
        command.insert(command.end(), {"--method", call.at(2)});
        command.insert(command.end(), call.begin() + 3, call.end());
        children.push_back(session.desk.start(command));
        break;
    }
    }
}

bool Stage::hears(const std::string& line, std::size_t times)
{
    return desktop::waitUntil([&] { return chronicle->countOf(line) >= times; }, LONGEST_START);
}

/// All that runs now stays out of it.
void Stage::begin()
{
    chronicle->turnPage();
    const std::vector<pid_t> all = desktop::descendants();
    own = {all.begin(), all.end()};
}

Problem Stage::start(const Application& application, Way way)
{
    begin();
    starts = 1;
    ends = 1;
    launch(application, way);
    if (!hears("Did start: " + application.name)) {
        return "no start seen: " + chronicle->text();
    }
    // The agent sees a window before the window manager lists it.
    desktop::waitUntil([this] { return chronicle->firstWindow().has_value(); }, LONGEST_END);
    const auto announced = chronicle->firstLine("Will start: " + application.name);
    const auto shown = chronicle->firstWindow();
    if (!shown) {
        return "no window listed: " + chronicle->text();
    }
    if (!announced || *shown < *announced) {
        return "announced after its window: " + chronicle->text();
    }
    if (!agent::isUncovered(session.desk)) {
        return "locked";
    }
    return std::nullopt;
}

Problem Stage::startAgain(const Application& application)
{
    ++starts;
    desktop::ChildProcess again = inShell("exec " + application.command);
    if (!hears("Will start: " + application.name, starts)) {
        return "second start not seen: " + chronicle->text();
    }
    if (application.second == SecondStart::Runs) {
        ++ends;
        if (!hears("Did start: " + application.name, starts)) {
            return "second window not seen: " + chronicle->text();
        }
    } else if (!again.waitForEnd(LONGEST_START)) {
        return "second start does not hand over";
    }
    children.push_back(std::move(again));
    return chronicle->countOf("Terminated: " + application.name) == 0
               ? std::nullopt
               : Problem("an end was told while it ran");
}

Problem Stage::end(const Application& application)
{
    if (Problem problem = endAll()) {
        return problem;
    }
    const std::string ended = "Terminated: " + application.name;
    if (!desktop::waitUntil([&] { return chronicle->countOf(ended) >= ends; }, LONGEST_END)) {
        return "end not seen: " + chronicle->text();
    }
    const std::size_t others = application.alsoStarts.empty()
                                   ? 0
                                   : chronicle->countOf("Will start: " + application.alsoStarts);
    if (chronicle->countOfAll("Will start: ") - others != starts ||
        chronicle->countOf(ended) != ends) {
        return "miscounted: " + chronicle->text();
    }
    return std::nullopt;
}

Problem Stage::unlock()
{
    session.enter(agent::PASSWORD);
    return session.waitForEndOfCover() ? std::nullopt
                                       : Problem("the password does not open the lock");
}

Problem Stage::startLocked(const Application& application, Way way)
{
    begin();
    launch(application, way);
    if (!session.waitForCover()) {
        return "not locked: " + chronicle->text();
    }
    if (!hears("Did start: " + application.name)) {
        return "no start seen: " + chronicle->text();
    }
    return unlock();
}

Problem Stage::startAgainLocked(const Application& application)
{
    desktop::ChildProcess again = inShell("exec " + application.command);
    if (!session.waitForCover()) {
        return "second start not locked: " + chronicle->text();
    }
    const bool seen = application.second == SecondStart::HandsOver
                          ? again.waitForEnd(LONGEST_START).has_value()
                          : hears("Did start: " + application.name, 2);
    if (!seen) {
        return "second start does not come to its end: " + chronicle->text();
    }
    children.push_back(std::move(again));
    if (!desktop::holdsFor([this] { return agent::isCovered(session.desk); }, 200ms)) {
        return "the lock of the second start is lifted: " + chronicle->text();
    }
    return unlock();
}

Problem Stage::endLocked(const Application& application)
{
    if (Problem problem = endAll()) {
        return problem;
    }
    return desktop::waitUntil(
               [&] { return chronicle->countOf("Terminated: " + application.name) > 0; },
               LONGEST_END
           )
               ? std::nullopt
               : Problem("end not seen: " + chronicle->text());
}

Problem Stage::endAll()
{
    const auto signalAll = [this](int number) {
        const std::set<pid_t> all = strangers();
        for (const pid_t process : all) {
            kill(process, number);
        }
        return all.empty();
    };
    signalAll(SIGTERM);
    const bool ended =
        desktop::waitUntil([this] { return strangers().empty(); }, ORDERLY_END, 20ms) ||
        desktop::waitUntil([&] { return signalAll(SIGKILL); }, LONGEST_END, 20ms);
    children.clear();
    if (!ended) {
        return "does not end";
    }
    const auto noWindow = [this] { return session.desk.windows().managed().empty(); };
    return desktop::waitUntil(noWindow, LONGEST_END) ? std::nullopt : Problem(windowsThatStay());
}

std::string Stage::windowsThatStay()
{
    desktop::WindowList& windows = session.desk.windows();
    std::string text = "window stays:";
    for (const xcb_window_t window : windows.managed()) {
        text += " " + windows.classOf(window);
    }
    return text;
}

std::string Stage::report()
{
    return session.report();
}

} // namespace applications
