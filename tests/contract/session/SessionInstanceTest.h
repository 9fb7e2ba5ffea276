// Programs of one name in a session of their own, started and ended by the test.
#pragma once

#include "desktop/TemporaryFolder.h"
#include "linux/session/LocalSocket.h"
#include "linux/session/SessionName.h"
#include "linux/session/SessionWatch.h"
#include "processes/Dialogue.h"
#include "processes/Environment.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

class SessionInstance : public testing::Test
{
protected:
    static constexpr auto NAME = "Tarvel";
    static constexpr int PATIENCE_MILLISECONDS = 20000;

    std::unique_ptr<processes::Dialogue> start(const std::string& manner = "activating") const
    {
        return startIn({{"DISPLAY", ":77"}}, NAME, manner);
    }

    std::unique_ptr<processes::Dialogue> startIn(
        desktop::Environment environment,
        const std::string& name = NAME,
        const std::string& manner = "activating"
    ) const
    {
        environment["XDG_RUNTIME_DIR"] = runtime.path();
        return std::make_unique<processes::Dialogue>(
            std::vector<std::string>{SESSION_PEER, name, manner}, environment
        );
    }

    std::unique_ptr<processes::Dialogue> startFirst() const
    {
        auto first = start();
        EXPECT_EQ(first->hear(), "first");
        return first;
    }

    // The status that a watcher learns when the first does as told.
    std::optional<int> statusAfter(const std::string& command) const
    {
        const auto first = startFirst();
        const auto watch = session::SessionWatch::open(NAME);
        if (watch == nullptr) {
            ADD_FAILURE() << "nobody to watch";
            return std::nullopt;
        }
        first->say(command);
        return statusAtEnd(*watch);
    }

    static std::optional<int> statusAtEnd(session::SessionWatch& watch)
    {
        pollEnd(watch);
        return watch.exitStatus();
    }

    static void pollEnd(const session::SessionWatch& watch)
    {
        const descriptors::FileDescriptor copy(::dup(watch.fd()));
        ASSERT_TRUE(session::waitUntilReadable(copy, PATIENCE_MILLISECONDS));
        EXPECT_TRUE(watch.hasEnded());
    }

    std::filesystem::path folder() const { return runtime.path() / "com.quorvent.Tarvel"; }

    std::filesystem::path socketPath() const
    {
        return folder() / session::socketName(session::sessionName(NAME));
    }

    const desktop::TemporaryFolder runtime;
    const processes::EnvironmentVariable runtimeVariable{"XDG_RUNTIME_DIR", runtime.path()};
    const processes::EnvironmentVariable display{"DISPLAY", ":77"};
    const processes::EnvironmentVariable wayland{"WAYLAND_DISPLAY", std::nullopt};
};
