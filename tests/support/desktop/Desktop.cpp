#include "desktop/Desktop.h"

#include "desktop/SessionProcesses.h"

#include <algorithm>
#include <array>
#include <string_view>

#include <unistd.h>

namespace desktop {

namespace {

void passOn(Environment& environment)
{
    constexpr std::array<std::string_view, 6> NAMES = {
        "PATH",
        "TZ",
        "ASAN_OPTIONS",
        "LSAN_OPTIONS",
        "TSAN_OPTIONS",
        "UBSAN_OPTIONS",
    };
    for (char** entry = environ; *entry != nullptr; ++entry) {
        const std::string_view text = *entry;
        const std::string_view name = text.substr(0, text.find('='));
        if (std::find(NAMES.begin(), NAMES.end(), name) != NAMES.end()) {
            environment[std::string(name)] = text.substr(std::min(name.size() + 1, text.size()));
        }
    }
}

/// What lets the bus start the keyring's own prompt.
std::filesystem::path prompterIn(const TemporaryFolder& files)
{
    std::filesystem::path services = files.subfolder("services");
    writeFile(
        services / "prompter.service",
        "[D-BUS Service]\nName=org.gnome.keyring.SystemPrompter\nExec=/usr/libexec/gcr-prompter\n"
    );
    return services;
}

} // namespace

Environment privateEnvironment(const TemporaryFolder& folder)
{
    Environment environment = {
        {"PATH", "/usr/local/bin:/usr/bin:/bin:/usr/games"},
        {"LANG", "C.UTF-8"},
        {"SHELL", "/bin/sh"},
        {"HOME", folder.subfolder("home").string()},
        {"XDG_CONFIG_HOME", folder.subfolder("home/.config").string()},
        {"XDG_CACHE_HOME", folder.subfolder("home/.cache").string()},
        {"XDG_DATA_HOME", folder.subfolder("home/.local/share").string()},
        {"XDG_STATE_HOME", folder.subfolder("home/.local/state").string()},
        {"XDG_RUNTIME_DIR", folder.subfolder("run").string()},
        {"XDG_SESSION_TYPE", "x11"},
        {"GSETTINGS_BACKEND", "memory"},
        {"NO_AT_BRIDGE", "1"},
    };
    passOn(environment);
    return environment;
}

Desktop::Desktop(const Parts& parts)
    : environment(privateEnvironment(files)),
      xServer(std::make_unique<PrivateXServer>(
          parts.screens,
          environment,
          parts.framebuffer ? files.subfolder("framebuffer") : std::filesystem::path()
      )),
      hands(xServer->connection()),
      list(xServer->connection())
{
    environment["DISPLAY"] = xServer->displayName();
    if (parts.bus) {
        sessionBus = std::make_unique<PrivateBus>(
            files.subfolder("bus"),
            environment,
            parts.keyringPrompts ? prompterIn(files) : parts.services
        );
        environment["DBUS_SESSION_BUS_ADDRESS"] = sessionBus->address();
    }
    if (parts.bus && parts.keyring) {
        secretService = std::make_unique<PrivateKeyring>(*sessionBus, environment);
    }
    if (parts.windowManager) {
        startWindowManager();
    }
}

Desktop::~Desktop()
{
    endProcessesOf(files.path());
}

void Desktop::startWindowManager()
{
    manager = std::make_unique<WindowManager>(xServer->connection(), environment);
}

ChildProcess Desktop::start(const std::vector<std::string>& arguments)
{
    return ChildProcess({.arguments = arguments, .environment = environment});
}

void Desktop::startLockedKeyring()
{
    secretService.reset();
    secretService =
        std::make_unique<PrivateKeyring>(*sessionBus, environment, PrivateKeyring::Locked{});
}

} // namespace desktop
