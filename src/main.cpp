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

    agent::DisplayConnections connections{x11::Connection::open(), x11::Connection::open()};
    if (connections.forGuard == nullptr || connections.forQuestions == nullptr) {
        log.diagnostic("Tarvel needs an X11 display, and there is none that can be reached");
        return 1;
    }

    // The user's arguments are not the toolkit's, and the lock stands on X11 alone.
    std::string platformOption = "-platform";
    std::string platformName = "xcb";
    std::array<char*, 4> arguments{argv[0], platformOption.data(), platformName.data(), nullptr};
    int argumentCount = 3;
    QApplication application(argumentCount, arguments.data());
    prepare(application);
    const toolkit::MaskedTextEvents maskedTextEvents;
    // Far more than a bus takes that is busy at login: what is left out stays so.
    constexpr std::chrono::milliseconds BUS_PATIENCE(500);
    if (dbus::busIsSilent(dbus::sessionBusAddress(), BUS_PATIENCE)) {
        log.diagnostic("The session bus does not answer; assistive programs are left out");
        qt::leaveOutAssistiveBridge(application);
    }

    agent::Agent agent(log, processInfo, std::move(connections));
    QApplication::setQuitOnLastWindowClosed(agent.endsWithItsLastWindow());
    processInfo.onExit = [&](int status) {
        agent.writeOut();
        instance.announceExit(status);
    };
    const qt::QuitRequests quitRequests(application, [&agent] { return agent.mayQuit(); });
    instance.onActivated = [&agent] { agent.activate(); };
    std::optional<QSocketNotifier> secondStart;
    if (instance.fd() >= 0) {
        secondStart.emplace(instance.fd(), QSocketNotifier::Read);
        QObject::connect(&*secondStart, &QSocketNotifier::activated, [&instance] {
            instance.handle();
        });
    }
    agent.start();
    return QApplication::exec();
}
