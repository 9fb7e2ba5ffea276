// One agent a session: the first start becomes it, a second hands over.
#include "agent/Agent.h"
#include "linux/dbus/BusAnswers.h"
#include "linux/process/DescriptorLimit.h"
#include "linux/qt/AssistiveBridge.h"
#include "linux/qt/QuitRequests.h"
#include "linux/session/Programs.h"
#include "linux/session/SessionInstance.h"
#include "toolkit/MaskedTextEvents.h"
#include "ui/views/Images.h"
#include "ui/views/Theme.h"

#include <QApplication>
#include <QSocketNotifier>

#include <array>
#include <chrono>
#include <csignal>
#include <optional>
#include <string>
#include <utility>

namespace {

/// A start that nobody asked for, as at login or after a crash, opens nothing in the first.
session::Acquired acquire(session::SessionInstance& instance, process::UnixProcessInfo& processInfo)
{
    return instance.acquire(
        app::isSilentStart(processInfo.arguments()) ? session::SecondStart::IsQuiet
                                                    : session::SecondStart::ActivatesFirst
    );
}

void prepare(QApplication& application)
{
    QApplication::setApplicationName(QString::fromLatin1(session::AGENT));
    QApplication::setDesktopFileName(QString::fromLatin1(session::IDENTIFIER));
    ui::Theme::install(application);
    QApplication::setWindowIcon(ui::requiredImage(QStringLiteral("ApplicationIcon")));
}

/// Nothing where there is no display.
std::optional<agent::DisplayConnections> connectToDisplay(process::StreamLog& log)
{
    agent::DisplayConnections connections{x11::Connection::open(), x11::Connection::open()};
    if (connections.forGuard == nullptr || connections.forQuestions == nullptr) {
        log.diagnostic("Tarvel needs an X11 display, and there is none that can be reached");
        return std::nullopt;
    }
    return connections;
}

/// What the toolkit is told, as long as it runs: the user's arguments are not its, and the lock
/// stands on X11 alone.
struct ToolkitArguments
{
    explicit ToolkitArguments(char* program)
        : values{program, platformOption.data(), platformName.data(), nullptr}
    {
    }

    ToolkitArguments(const ToolkitArguments&) = delete;
    ToolkitArguments& operator=(const ToolkitArguments&) = delete;
    ToolkitArguments(ToolkitArguments&&) = delete;
    ToolkitArguments& operator=(ToolkitArguments&&) = delete;
    ~ToolkitArguments() = default;

    std::string platformOption = "-platform";
    std::string platformName = "xcb";
    std::array<char*, 4> values;
    int count = 3;
};

/// The toolkit waits as long as the bus does.
void guardAgainstSilentBus(QApplication& application, process::StreamLog& log)
{
    // Far more than a bus takes that is busy at login: what is left out stays so.
    constexpr std::chrono::milliseconds BUS_PATIENCE(500);
    if (dbus::busIsSilent(dbus::sessionBusAddress(), BUS_PATIENCE)) {
        log.diagnostic("The session bus does not answer; assistive programs are left out");
        qt::leaveOutAssistiveBridge(application);
    }
}

void listenForSecondStarts(session::SessionInstance& instance, QApplication& application)
{
    if (instance.fd() < 0) {
        return;
    }
    auto* const listener = new QSocketNotifier(instance.fd(), QSocketNotifier::Read, &application);
    QObject::connect(listener, &QSocketNotifier::activated, [&instance] { instance.handle(); });
}

} // namespace

int main(int argc, char** argv)
{
    process::StreamLog log;
    process::UnixProcessInfo processInfo(argc, argv);
    // For the log and for the libraries; whatever starts programs gives them the usual one back.
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    process::raiseDescriptorLimit();

    session::SessionInstance instance(session::AGENT);
    instance.onProblem = agent::Reporter{&log};
    if (acquire(instance, processInfo) == session::Acquired::AlreadyRunning) {
        return 0;
    }

    std::optional<agent::DisplayConnections> connections = connectToDisplay(log);
    if (!connections) {
        return 1;
    }

    ToolkitArguments arguments(argv[0]);
    QApplication application(arguments.count, arguments.values.data());
    prepare(application);
    const toolkit::MaskedTextEvents maskedTextEvents;
    guardAgainstSilentBus(application, log);

    agent::Agent agent(log, processInfo, std::move(*connections));
    QApplication::setQuitOnLastWindowClosed(agent.endsWithItsLastWindow());
    processInfo.onExit = [&](int status) {
        agent.writeOut();
        instance.announceExit(status);
    };
    const qt::QuitRequests quitRequests(application, [&agent] { return agent.mayQuit(); });
    instance.onActivated = [&agent] { agent.activate(); };
    listenForSecondStarts(instance, application);
    agent.start();
    return QApplication::exec();
}
