#include "desktop/PrivateKeyring.h"

#include "desktop/Failure.h"
#include "desktop/TemporaryFolder.h"
#include "desktop/Wait.h"

#include <csignal>
#include <cstring>
#include <iostream>
#include <optional>

#include <sys/wait.h>

namespace desktop {

namespace {

std::filesystem::path wordsIn(const Environment& environment)
{
    return std::filesystem::path(environment.at("XDG_STATE_HOME")) / "gnome-keyring.log";
}

} // namespace

PrivateKeyring::PrivateKeyring(const PrivateBus& bus, const Environment& environment)
    : words(wordsIn(environment)),
      daemon(
          {.arguments =
               {"gnome-keyring-daemon", "--foreground", "--components=secrets", "--unlock"},
           .environment = environment,
           .error = words,
           .input = PASSWORD}
      ),
      client(bus.address())
{
    waitForService(bus);
}

PrivateKeyring::PrivateKeyring(
    const PrivateBus& bus, const Environment& environment, Locked /*locked*/
)
    : words(wordsIn(environment)),
      daemon(
          {.arguments = {"gnome-keyring-daemon", "--foreground", "--components=secrets"},
           .environment = environment,
           .error = words}
      ),
      client(bus.address())
{
    waitForService(bus);
}

PrivateKeyring::~PrivateKeyring()
{
    std::cerr << death();
}

const KeyringItems& PrivateKeyring::items()
{
    const std::string end = death();
    if (!end.empty()) {
        throw Failure(end);
    }
    return client;
}

void PrivateKeyring::waitForService(const PrivateBus& bus)
{
    const auto isUp = [&bus] { return bus.hasOwner("org.freedesktop.secrets"); };
    waitUntil([&] { return !daemon.isRunning() || isUp(); }, std::chrono::seconds(20));
    if (!isUp()) {
        throw Failure("the keyring does not come up\n" + death() + readFile(words));
    }
}

std::string PrivateKeyring::death()
{
    const std::optional<int> status = daemon.waitForEnd(std::chrono::milliseconds(0));
    if (!status.has_value() || !WIFSIGNALED(*status)) {
        return {};
    }
    const int signal = WTERMSIG(*status);
    if (signal == SIGTERM || signal == SIGKILL) {
        return {};
    }
    const char* const meaning = sigdescr_np(signal);
    return "gnome-keyring-daemon was ended by signal " + std::to_string(signal) + " (" +
           (meaning != nullptr ? meaning : "?") + "). It had said:\n" + readFile(words);
}

} // namespace desktop
