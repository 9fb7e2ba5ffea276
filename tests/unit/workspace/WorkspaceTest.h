// A desktop whose processes, windows and installed applications do what a test says, and what its
// observers hear.
#pragma once

#include "Facts.h"
#include "FakeApplicationIndex.h"
#include "FakeProcessSource.h"
#include "FakeWindowSystem.h"
#include "fakes/FakeDispatchQueues.h"
#include "fakes/FakeIcon.h"
#include "fakes/FakeTimers.h"
#include "linux/workspace/LinuxWorkspace.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace workspace {

inline const platform::Bundle MAIN_BUNDLE{
    "/opt/Tarvel.app",
    std::string("Tarvel"),
    std::string("Tarvel"),
    std::string("com.quorvent.Tarvel")};

class WorkspaceTest : public testing::Test
{
protected:
    WorkspaceTest()
    {
        index.add(known("mousepad"));
        index.add(known("xterm"));
        index.add(known("agentless", false));
        index.roles["xterm"] = "com.apple.Terminal";
    }

    /// One program that is two applications, and runs as process 10 for one of them.
    void startOffice()
    {
        index.add(known("calc"));
        index.add(known("writer"));
        index.shared = {"calc", "writer"};
        start();
        exec(10, "writer");
    }

    void start()
    {
        desktop.start([this] { ready = true; });
        queues.runAll();
        observe(platform::WorkspaceNotificationName::WillLaunchApplication, "will launch");
        observe(platform::WorkspaceNotificationName::DidLaunchApplication, "did launch");
        observe(platform::WorkspaceNotificationName::DidTerminateApplication, "did terminate");
        observe(platform::WorkspaceNotificationName::DidActivateApplication, "did activate");
        observe(platform::WorkspaceNotificationName::DidDeactivateApplication, "did deactivate");
        desktop.addKeyPathObserver(
            this,
            platform::RUNNING_APPLICATIONS_KEY_PATH,
            3,
            [this](const auto&, const std::optional<platform::KeyValueChange>& change) {
                const bool inserted = change->newKey.has_value();
                const auto& list = inserted ? *change->newKey : *change->oldKey;
                heard.push_back(
                    (inserted ? "inserted " : "removed ") + *list.front().bundleIdentifier
                );
            }
        );
    }

    void observe(platform::WorkspaceNotificationName name, const std::string& text)
    {
        desktop.addObserver(this, name, [this, text](const auto& notification) {
            const auto& value = notification.userInfo->at(platform::WORKSPACE_APPLICATION_KEY);
            const auto& application = std::get<platform::RunningApplication>(value);
            heard.push_back(text + " " + *application.bundleIdentifier);
        });
    }

    void exec(pid_t pid, const std::string& name)
    {
        processes.exec(process(pid, name));
        queues.runAll();
    }

    void exit(pid_t pid)
    {
        processes.exit(pid);
        queues.runAll();
    }

    FakeApplicationIndex index;
    FakeProcessSource processes;
    FakeWindowSystem windows;
    fakes::FakeDispatchQueues queues;
    fakes::FakeTimers timers;
    std::vector<std::string> reports;
    std::vector<std::string> opened;
    OwnPrograms programs{MAIN_BUNDLE, index};
    LinuxWorkspace desktop{LinuxWorkspace::Parts{
        .processes = processes,
        .applications = programs,
        .windows = &windows,
        .queues = queues,
        .timers = timers,
        .loadIcon = [](const std::string& name) { return std::make_shared<fakes::FakeIcon>(name); },
        .openUrl =
            [this](const std::string& url) {
                opened.push_back(url);
                return true;
            },
        .report = [this](std::string_view line) { reports.emplace_back(line); },
        .session = {":1", ""},
    }};
    std::vector<std::string> heard;
    bool ready = false;
};

} // namespace workspace
