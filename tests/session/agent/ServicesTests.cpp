// Keyring and bus that are missing, closed, or leave.

#include "desktop/TemporaryFolder.h"
#include "linux/secretservice/EmbeddedStore.h"
#include "session/agent/AgentTest.h"

#include <csignal>
#include <string>
#include <string_view>

namespace agent {

namespace {

constexpr auto PROMPT_SERVICE = "org.gnome.keyring.SystemPrompter";

} // namespace

class Services : public AgentTest
{
protected:
    /// Keeps what `protect` keeps in the store of a session without a keyring.
    void protectWithoutKeyring() const
    {
        secretservice::EmbeddedStore store(
            session->desk.home() / ".local/share/com.quorvent.Tarvel/keychain",
            [](std::string_view /*line*/) {}
        );
        put(store, "Password", PASSWORD);
        put(store, "Applications", std::string(TERMINAL) + ";");
        put(store, "Administrative", "0");
    }

    bool isLockedAndOpened() const
    {
        const Recorder xterm(session->desk);
        return locks() && opensWithThePassword();
    }

    /// A keyring that is there but closed, and that asks for its password.
    void openWithClosedKeyring()
    {
        desktop::Desktop::Parts parts;
        parts.keyringPrompts = true;
        open(parts);
        session->protect({TERMINAL});
        session->desk.startLockedKeyring();
    }

    bool keyringAsks() const
    {
        return desktop::waitUntil(
            [this] {
                return session->desk.bus().hasOwner(PROMPT_SERVICE) &&
                       session->desk.windows().active() != 0;
            },
            PATIENCE
        );
    }

private:
    static void
    put(secretservice::EmbeddedStore& store, const std::string& key, const std::string& value)
    {
        const auto failure = store.put(
            "com.quorvent.Tarvel (" + key + ")",
            secretservice::SecretBytes(value.begin(), value.end()),
            secretservice::Prompting::Forbidden
        );
        ASSERT_FALSE(failure.has_value()) << *failure;
    }
};

TEST_F(Services, WithoutABusTheAgentLocks)
{
    open({.bus = false, .keyring = false});
    protectWithoutKeyring();

    ASSERT_TRUE(session->startAndWait());
    EXPECT_TRUE(isLockedAndOpened());
}

TEST_F(Services, WithoutAKeyringTheAgentLocks)
{
    open({.keyring = false});
    protectWithoutKeyring();

    ASSERT_TRUE(session->startAndWait());
    EXPECT_TRUE(isLockedAndOpened());
}

TEST_F(Services, WithoutAPasswordNothingIsWatched)
{
    open({.keyring = false});
    session->startAgent();

    EXPECT_TRUE(session->waitForLine("Will not start. No password"));
    Recorder xterm(session->desk);
    EXPECT_TRUE(getsFocus(xterm.process()));
    EXPECT_TRUE(isUncovered(session->desk));
    EXPECT_EQ(session->countOf("Will start: XTerm"), 0U);
}

TEST_F(Services, ABusThatLeavesTakesNoProtectionAlong)
{
    watch({TERMINAL});

    session->desk.stopKeyring();
    session->desk.stopBus();

    EXPECT_TRUE(isLockedAndOpened());
    EXPECT_TRUE(session->process().isRunning());
}

TEST_F(Services, ABusThatLeavesDuringALockLeavesTheLock)
{
    watch({TERMINAL});
    const Recorder xterm(session->desk);
    ASSERT_TRUE(locks());

    session->desk.stopKeyring();
    session->desk.stopBus();

    EXPECT_TRUE(coverStaysFor(4s));
    EXPECT_TRUE(opensWithThePassword());
}

TEST_F(Services, ABusThatDoesNotAnswerAtTheStartHoldsNoLockBack)
{
    open({.keyring = false});
    protectWithoutKeyring();
    session->desk.bus().process().signal(SIGSTOP);

    ASSERT_TRUE(session->startAndWait());
    EXPECT_TRUE(isLockedAndOpened());
}

TEST_F(Services, ABusThatDoesNotAnswerAtTheStartIsWaitedForWhereNothingElseKeepsThePassword)
{
    open();
    session->protect({TERMINAL});
    session->desk.bus().process().signal(SIGSTOP);
    session->startAgent();

    EXPECT_TRUE(desktop::waitUntil(
        [this] {
            return session->errors().find("the session bus does not answer") != std::string::npos;
        },
        PATIENCE
    ));
    EXPECT_TRUE(session->lines().empty());
    session->desk.bus().process().signal(SIGCONT);

    ASSERT_TRUE(session->waitForLine("Monitoring services started"));
    EXPECT_TRUE(isLockedAndOpened());
}

TEST_F(Services, ABusThatStopsAnsweringFreezesNothing)
{
    watch({TERMINAL});

    session->desk.bus().process().signal(SIGSTOP);

    EXPECT_TRUE(isLockedAndOpened());
    ASSERT_TRUE(session->waitForLine("Terminated: XTerm"));
    EXPECT_TRUE(isLockedAndOpened());
    EXPECT_TRUE(session->process().isRunning());
}

TEST_F(Services, AClosedKeyringIsWaitedFor)
{
    openWithClosedKeyring();
    session->startAgent();
    ASSERT_TRUE(keyringAsks());
    EXPECT_TRUE(desktop::holdsFor([this] { return session->lines().empty(); }, 500ms));

    session->desk.input().type(desktop::PrivateKeyring::PASSWORD);
    session->desk.input().press(desktop::KEY_RETURN);

    EXPECT_TRUE(session->waitForLine("Monitoring services started"));
    EXPECT_TRUE(isLockedAndOpened());
}

TEST_F(Services, AKeyringThatStaysClosedEndsTheAgent)
{
    openWithClosedKeyring();
    session->startAgent();
    ASSERT_TRUE(keyringAsks());

    session->desk.input().press(desktop::KEY_ESCAPE);

    EXPECT_EQ(session->process().waitForExitStatus(PATIENCE), 1);
    EXPECT_NE(session->errors().find("the keyring stays locked"), std::string::npos)
        << session->errors();
    EXPECT_TRUE(session->lines().empty());
    EXPECT_TRUE(desktop::holdsFor([this] { return session->agents().empty(); }, 1s));
}

TEST_F(Services, AKeyringThatStaysClosedEndsTheHelperTooAndAsksNobodyAgain)
{
    openWithClosedKeyring();
    desktop::ChildProcess helper = session->desk.start({AgentSession::helperPath()});
    ASSERT_TRUE(keyringAsks());
    EXPECT_EQ(session->agents().size(), 1U);

    session->desk.input().press(desktop::KEY_ESCAPE);

    EXPECT_EQ(helper.waitForExitStatus(PATIENCE), 0);
    const auto isQuiet = [this] {
        return session->agents().empty() && session->desk.windows().managed().empty();
    };
    EXPECT_TRUE(desktop::waitUntil(isQuiet, PATIENCE));
    EXPECT_TRUE(desktop::holdsFor(isQuiet, 1s));
}

} // namespace agent
